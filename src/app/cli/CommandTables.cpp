#include "app/cli/CommandTables.h"

#include <algorithm>
#include <array>

namespace vorq {
namespace {

constexpr std::string_view areaNames = "writing|research|study|personal";

constexpr OptionRow areaOption{.name = "--area", .value = "AREA", .help = "", .choices = areaNames};
constexpr std::string_view allPreviewNames = "hub|writing|watch";

constexpr OptionRow jsonOption{.name = "--json", .value = "", .help = ""};

constexpr std::array desktopOptions = {
    OptionRow{.name = "--background", .value = "", .help = "starts without opening the menu"},
    OptionRow{.name = "--launched-at-login",
              .value = "",
              .help = "the same, for the entry that starts Vorq at login"},
    OptionRow{.name = "--preview",
              .value = "NAME",
              .help = "opens hub, writing or watch in this run; see vorq preview --help",
              .missing = "needs the name of a preview.",
              .choices = allPreviewNames,
              .isRepeatable = true},
};

constexpr std::array desktopRows = {
    CommandRow{.names = "summon", .help = "shows the panel and takes up what is highlighted"},
    CommandRow{.names = "note", .help = "files what is highlighted in a note"},
    CommandRow{.names = "push-note", .help = "ends that note: the next text begins a new one"},
    CommandRow{.names = "clear", .help = "clears the chat"},
    CommandRow{.names = "rewrite",
               .help = "rewrites what is highlighted where it stands; see vorq preview --help"},
    CommandRow{.names = "toggle", .help = "shows or hides the panel"},
    CommandRow{.names = "settings", .help = "opens the settings"},
    CommandRow{.names = "save-chat", .help = "keeps the chat of the panel in your notes"},
    CommandRow{.names = "quit", .help = "ends Vorq"},
};

constexpr std::array askOptions = {
    OptionRow{.name = "--file",
              .value = "F",
              .help = "attaches a file; may be given several times",
              .missing = "needs the name of a file.",
              .namesFile = true,
              .isRepeatable = true},
    OptionRow{.name = "--model",
              .value = "ID",
              .help = "asks for this model instead of the chosen one",
              .missing = "needs the id of a model."},
};

constexpr std::array doctorOptions = {
    OptionRow{.name = "--json",
              .value = "",
              .help = "writes a report for bug reports instead, without private text"},
    OptionRow{.name = "--window",
              .value = "",
              .help = "shows it in a window of Vorq instead, which starts if it does not run"},
};

constexpr std::array terminalRows = {
    CommandRow{.names = "ask",
               .operands = "PROMPT",
               .help = "Answers a prompt in the terminal. Text on standard input counts as the\n"
                       "highlighted text; without a PROMPT it is analysed. It is read to its end:\n"
                       "use </dev/null where it stays open without a text, as in some schedulers.",
               .options = askOptions,
               .helpListsOptions = true},
    CommandRow{.names = "open",
               .operands = "URL",
               .help =
                   "Takes a vorq:// link, such as the one that ends a sign-in, to the Vorq that\n"
                   "runs, or else signs in itself."},
    CommandRow{.names = "notes", .operands = "list | show | save | export"},
    CommandRow{.names = "chats",
               .operands = "list | show",
               .help = "The saved notes and chats; see vorq notes --help and vorq chats --help."},
    CommandRow{
        .names = "enable-accessibility",
        .help = "Lets programs show Vorq what you highlight, as \"Accessibility\" in the menu of\n"
                "the tray does. Some programs have to be started again to do so."},
    CommandRow{
        .names = "enable-backend|disable-backend",
        .help =
            "Has vorq-gateway, the backend on this computer, start at login and now, or no\n"
            "longer at login, as \"Start Local Backend at Login\" in the menu of the tray does."},
    CommandRow{.names = "doctor",
               .help =
                   "Tries out on a small window what works on this desktop: capture, hot keys,\n"
                   "tray, notes, backend. It says what does not, why, and what to do.",
               .options = doctorOptions,
               .helpListsOptions = true},
    CommandRow{.names = "preview",
               .operands = "[NAME on|off]",
               .help =
                   "Opens what is closed in this release ahead of time; see vorq preview --help."},
    CommandRow{.names = "--help|--version"},
};

constexpr std::array programSections = {
    CommandSection{
        .heading =
            "For keys of the desktop and for scripts, with the application in front as the source:",
        .rows = desktopRows,
        .isBrief = true,
        .remark = "The first seven start Vorq if it does not run.",
        .options = desktopOptions},
    CommandSection{.heading = "In the terminal:", .rows = terminalRows},
};

constexpr std::array notesListOptions = {areaOption, jsonOption};
constexpr std::array showOptions = {jsonOption};
constexpr std::array saveOptions = {
    OptionRow{.name = "--title", .value = "T", .help = ""},
    areaOption,
    OptionRow{.name = "--plain", .value = "", .help = ""},
};
constexpr std::array exportOptions = {
    OptionRow{.name = "--format",
              .value = "markdown|plain|rtf",
              .help = "",
              .choices = "markdown|plain|rtf"},
    OptionRow{.name = "--output", .value = "FILE", .help = "", .namesFile = true},
};

constexpr std::array notesRows = {
    CommandRow{.names = "list",
               .help = "The notes, the newest first: id, date, area and title.",
               .options = notesListOptions},
    CommandRow{.names = "show",
               .operands = "ID",
               .help = "A note with its flashcards.",
               .options = showOptions},
    CommandRow{.names = "save",
               .operands = "[TEXT]",
               .help =
                   "Makes a note of the TEXT, or of standard input, and prints its id. The text\n"
                   "is Markdown, such as a reply of vorq ask; with --plain it is kept as it is.",
               .options = saveOptions},
    CommandRow{.names = "export",
               .operands = "ID",
               .help =
                   "Writes a note to FILE, or to standard output. Without --format the name of\n"
                   "the FILE tells it (.md, .txt, .rtf).",
               .options = exportOptions},
};
constexpr std::array notesSections = {CommandSection{.heading = "", .rows = notesRows}};

constexpr std::array chatsRows = {
    CommandRow{.names = "list",
               .help =
                   "The saved chats, the newest first: id, date, place (panel or hub) and title.",
               .options = showOptions},
    CommandRow{
        .names = "show", .operands = "ID", .help = "A chat as Markdown.", .options = showOptions},
};
constexpr std::array chatsSections = {CommandSection{.heading = "", .rows = chatsRows}};

constexpr std::string_view switchPositions = "on|off";

constexpr std::array previewRows = {
    CommandRow{.names = "hub",
               .operands = switchPositions,
               .help =
                   "The Hub, with its chats, quizzes, tasks and trackers. It comes with a later\n"
                   "release: until then only its strip shows, in the window of the settings.",
               .choices = switchPositions},
    CommandRow{
        .names = "writing",
        .operands = switchPositions,
        .help = "Writing tools beside what you highlight: Super+Shift+W, or vorq rewrite, opens\n"
                "a card that rewrites it where it stands, as you say.",
        .choices = switchPositions},
    CommandRow{.names = "watch",
               .operands = switchPositions,
               .help =
                   "Follows the window in front and what you highlight in it, as the menu of the\n"
                   "tray says all the while. It stays in memory and is sent nowhere.",
               .choices = switchPositions},
};
constexpr std::array previewSections = {CommandSection{.heading = "", .rows = previewRows}};

constexpr std::array pages = {
    CommandPage{
        .program = "vorq",
        .operands = "[COMMAND]",
        .introduction =
            "Without a command Vorq starts in the tray of the desktop; if it runs already, its\n"
            "menu opens. A vorq:// link as the command is opened there, too.",
        .sections = programSections,
        .remarks = "Environment: VORQ_API_BASE_URL is the address of the backend\n"
                   "(http://127.0.0.1:8787 unless told otherwise)."},
    CommandPage{
        .program = "vorq notes",
        .operands = "COMMAND",
        .introduction = "",
        .sections = notesSections,
        .remarks =
            "AREA is writing, research, study or personal. An ID may be cut short as long as only\n"
            "one note begins with it. list, show and export change nothing."},
    CommandPage{.program = "vorq chats",
                .operands = "COMMAND",
                .introduction = "",
                .sections = chatsSections,
                .remarks = "An ID may be cut short as long as only one chat begins with it. "
                           "Nothing is changed."},
    CommandPage{.program = "vorq preview",
                .operands = "[NAME on|off]",
                .introduction =
                    "Lists what is closed in this release, or opens and closes it. The switch is\n"
                    "remembered, and counts at once in the Vorq that runs.",
                .sections = previewSections,
                .remarks = "vorq --preview NAME opens it in one run alone."},
};

bool isNameOf(const CommandRow& row, QStringView name) {
    const QString names = QString::fromUtf8(row.names.data(), qsizetype(row.names.size()));
    return names.split(u'|').contains(name);
}

} // namespace

std::span<const CommandPage> commandPages() {
    return pages;
}

const CommandRow* commandNamed(const CommandPage& page, QStringView name) {
    for (const CommandSection& section : page.sections)
        for (const CommandRow& row : section.rows)
            if (isNameOf(row, name)) return &row;
    return nullptr;
}

} // namespace vorq
