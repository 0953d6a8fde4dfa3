#include "app/cli/LibraryCommandLine.h"

#include <QMap>

namespace vorq {
namespace {

using Parsed = std::variant<LibraryCommand, LibraryHelp, LibraryMisuse>;

const QString notesUsage = QStringLiteral(
    "Usage: vorq notes COMMAND\n"
    "\n"
    "  vorq notes list [--area AREA] [--json]\n"
    "        The notes, the newest first: id, date, area and title.\n"
    "  vorq notes show [--json] ID\n"
    "        A note with its flashcards.\n"
    "  vorq notes save [--title T] [--area AREA] [--plain] [TEXT]\n"
    "        Makes a note of the TEXT, or of standard input, and prints its id. The text\n"
    "        is Markdown, such as a reply of vorq ask; with --plain it is kept as it is.\n"
    "  vorq notes export [--format markdown|plain|rtf] [--output FILE] ID\n"
    "        Writes a note to FILE, or to standard output. Without --format the name of\n"
    "        the FILE tells it (.md, .txt, .rtf).\n"
    "\n"
    "AREA is writing, research, study or personal. An ID may be cut short as long as only\n"
    "one note begins with it. list, show and export change nothing.\n");

const QString chatsUsage = QStringLiteral(
    "Usage: vorq chats COMMAND\n"
    "\n"
    "  vorq chats list [--json]\n"
    "        The saved chats, the newest first: id, date, place (panel or hub) and title.\n"
    "  vorq chats show [--json] ID\n"
    "        A chat as Markdown.\n"
    "\n"
    "An ID may be cut short as long as only one chat begins with it. Nothing is changed.\n");

// The words and options behind the verbs.
struct Words {
    QStringList words;
    QMap<QString, QString> options; // flags have no value
    QString problem;
    bool wantsHelp = false;

    [[nodiscard]] bool has(const QString& option) const { return options.contains(option); }
};

Words wordsOf(const QStringList& arguments, const QStringList& flags, const QStringList& valued) {
    Words found;
    bool optionsEnded = false;
    for (qsizetype at = 2; at < arguments.size() && found.problem.isEmpty(); ++at) {
        const QString& argument = arguments[at];
        if (optionsEnded || !argument.startsWith(u'-') || argument == u"-") {
            found.words += argument;
            continue;
        }
        const qsizetype equals = argument.indexOf(u'=');
        const QString name = argument.left(equals);
        if (argument == u"--") {
            optionsEnded = true;
        } else if (argument == u"--help" || argument == u"-h") {
            found.wantsHelp = true;
        } else if (flags.contains(argument)) {
            found.options.insert(argument, {});
        } else if (!valued.contains(name)) {
            found.problem =
                QStringLiteral("%1 %2 has no option %3.").arg(arguments[0], arguments[1], name);
        } else {
            const bool isBehind = equals < 0 && at + 1 < arguments.size();
            const QString value = equals >= 0 ? argument.mid(equals + 1)
                                  : isBehind  ? arguments[++at]
                                              : QString();
            if (value.isEmpty()) found.problem = QStringLiteral("%1 needs a value.").arg(name);
            found.options.insert(name, value);
        }
    }
    return found;
}

std::optional<LibraryMisuse> takeArea(const Words& words, std::optional<HubArea>& area) {
    const QString option = QStringLiteral("--area");
    if (!words.has(option)) return std::nullopt;
    area = hubAreaNamed(words.options[option]);
    if (area) return std::nullopt;
    return LibraryMisuse{QStringLiteral("There is no area %1.").arg(words.options[option])};
}

Parsed parseNotesList(const Words& words) {
    ListNotes command;
    if (const auto misuse = takeArea(words, command.area)) return *misuse;
    if (!words.words.isEmpty()) return LibraryMisuse{QStringLiteral("notes list takes no ID.")};
    command.asJson = words.has(QStringLiteral("--json"));
    return command;
}

Parsed parseNotesSave(const Words& words) {
    std::optional<HubArea> area;
    if (const auto misuse = takeArea(words, area)) return *misuse;
    const QString text = words.words.join(u' ');
    return SaveNote{text == u"-" ? QString() : text, words.options.value(QStringLiteral("--title")),
                    area.value_or(HubArea::Personal), words.has(QStringLiteral("--plain"))};
}

std::optional<NoteFormat> formatNamed(const QString& name) {
    if (name == u"markdown" || name == u"md") return NoteFormat::Markdown;
    if (name == u"plain" || name == u"txt") return NoteFormat::Plain;
    if (name == u"rtf") return NoteFormat::Rtf;
    return std::nullopt;
}

Parsed parseNotesExport(const Words& words) {
    if (words.words.size() != 1) return LibraryMisuse{QStringLiteral("notes export needs one ID.")};
    ExportNote command;
    command.id = words.words.front();
    command.output = words.options.value(QStringLiteral("--output"));
    const QString option = QStringLiteral("--format");
    if (words.has(option)) {
        const auto format = formatNamed(words.options[option]);
        if (!format)
            return LibraryMisuse{
                QStringLiteral("There is no format %1.").arg(words.options[option])};
        command.format = *format;
    } else {
        const QString suffix = command.output.section(u'.', -1).toLower();
        command.format = formatNamed(suffix).value_or(NoteFormat::Markdown);
    }
    return command;
}

template<typename Show>
Parsed parseShow(const Words& words, const QString& verb) {
    if (words.words.size() != 1)
        return LibraryMisuse{QStringLiteral("%1 show needs one ID.").arg(verb)};
    return Show{words.words.front(), words.has(QStringLiteral("--json"))};
}

Parsed parseChatsList(const Words& words) {
    if (!words.words.isEmpty()) return LibraryMisuse{QStringLiteral("chats list takes no ID.")};
    return ListChats{words.has(QStringLiteral("--json"))};
}

} // namespace

Parsed parseLibraryCommand(const QStringList& arguments) {
    const QString json = QStringLiteral("--json");
    const QString plain = QStringLiteral("--plain");
    const QString& verb = arguments.front();
    const QString& usage = verb == u"notes" ? notesUsage : chatsUsage;
    if (arguments.size() < 2) return LibraryMisuse{QStringLiteral("%1 needs a command.").arg(verb)};
    const QString action = verb + u' ' + arguments[1];
    if (arguments[1] == u"--help" || arguments[1] == u"-h") return LibraryHelp{usage};

    const bool isSave = action == u"notes save";
    const Words words = wordsOf(arguments, isSave ? QStringList{plain} : QStringList{json},
                                isSave                      ? QStringList{"--title", "--area"}
                                : action == u"notes list"   ? QStringList{"--area"}
                                : action == u"notes export" ? QStringList{"--format", "--output"}
                                                            : QStringList());
    if (words.wantsHelp) return LibraryHelp{usage};
    if (!words.problem.isEmpty()) return LibraryMisuse{words.problem};
    if (action == u"notes list") return parseNotesList(words);
    if (action == u"notes show") return parseShow<ShowNote>(words, verb);
    if (isSave) return parseNotesSave(words);
    if (action == u"notes export") return parseNotesExport(words);
    if (action == u"chats list") return parseChatsList(words);
    if (action == u"chats show") return parseShow<ShowChat>(words, verb);
    return LibraryMisuse{QStringLiteral("There is no command %1.").arg(action)};
}

} // namespace vorq
