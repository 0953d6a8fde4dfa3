#include "app/cli/CommandLine.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vorq {
namespace {

const QString usage = QStringLiteral(
    "Usage: vorq [COMMAND]\n"
    "\n"
    "Without a command Vorq starts in the tray of the desktop; if it runs already, its\n"
    "menu opens. A vorq:// link as the command is opened there, too.\n"
    "\n"
    "For keys of the desktop and for scripts, with the application in front as the source:\n"
    "  vorq summon       shows the panel and takes up what is highlighted\n"
    "  vorq clear        clears the chat\n"
    "  vorq toggle       shows or hides the panel\n"
    "  vorq save-chat    keeps the chat of the panel in your notes\n"
    "  vorq quit         ends Vorq\n"
    "The first three start Vorq if it does not run.\n"
    "        --background          starts without opening the menu\n"
    "        --launched-at-login   the same, for the entry that starts Vorq at login\n"
    "\n"
    "In the terminal:\n"
    "  vorq ask [--file F]... [--model ID] PROMPT\n"
    "        Answers a prompt in the terminal. Text on standard input counts as the\n"
    "        highlighted text; without a PROMPT it is analysed. It is read to its end:\n"
    "        use </dev/null where it stays open without a text, as in some schedulers.\n"
    "        --file F     attaches a text or an image; may be given several times\n"
    "        --model ID   asks for this model instead of the chosen one\n"
    "  vorq open URL\n"
    "        Takes a vorq:// link, such as the one that ends a sign-in, to the Vorq that\n"
    "        runs, or else signs in itself.\n"
    "  vorq notes list | show | save | export\n"
    "  vorq chats list | show\n"
    "        The saved notes and chats; see vorq notes --help and vorq chats --help.\n"
    "  vorq enable-accessibility\n"
    "        Lets programs show Vorq what you highlight, as \"Accessibility\" in the menu of\n"
    "        the tray does. Some programs have to be started again to do so.\n"
    "  vorq enable-backend | disable-backend\n"
    "        Has vorq-gateway, the backend on this computer, start at login and now, or no\n"
    "        longer at login, as \"Start Local Backend at Login\" in the menu of the tray does.\n"
    "  vorq --help | --version\n"
    "\n"
    "Environment: VORQ_API_BASE_URL is the address of the backend\n"
    "(http://127.0.0.1:8787 unless told otherwise).\n");

constexpr std::array verbs = {
    std::pair(Verb::Summon, "summon"),      std::pair(Verb::Note, "note"),
    std::pair(Verb::PushNote, "push-note"), std::pair(Verb::Clear, "clear"),
    std::pair(Verb::Toggle, "toggle"),      std::pair(Verb::SaveChat, "save-chat"),
    std::pair(Verb::Quit, "quit"),
};

// Gives the value of an option, as "--name value" or "--name=value"; nothing if it is missing.
class OptionReader {
  public:
    explicit OptionReader(const QStringList& arguments, qsizetype first)
        : m_arguments(arguments), m_next(first) {}

    [[nodiscard]] bool atEnd() const { return m_next >= m_arguments.size(); }
    QString next() { return m_arguments[m_next++]; }

    [[nodiscard]] bool isOption(const QString& argument, QStringView name) const {
        return argument == name || (argument.startsWith(name) && argument[name.size()] == u'=');
    }

    std::optional<QString> valueOf(const QString& argument, QStringView name) {
        if (argument.size() > name.size()) return argument.mid(name.size() + 1);
        if (atEnd()) return std::nullopt;
        return next();
    }

  private:
    const QStringList& m_arguments;
    qsizetype m_next;
};

Command parseLibrary(const QStringList& arguments) {
    const auto parsed = parseLibraryCommand(arguments);
    if (const auto* help = std::get_if<LibraryHelp>(&parsed)) return ShowText{help->text};
    if (const auto* misuse = std::get_if<LibraryMisuse>(&parsed))
        return UsageError{misuse->message};
    return std::get<LibraryCommand>(parsed);
}

Command parseAsk(const QStringList& arguments) {
    AskArguments ask;
    QStringList words;
    OptionReader reader(arguments, 1);
    bool optionsEnded = false;
    while (!reader.atEnd()) {
        const QString argument = reader.next();
        if (optionsEnded || !argument.startsWith(u'-') || argument == u"-") {
            words += argument;
        } else if (argument == u"--") {
            optionsEnded = true;
        } else if (argument == u"--help" || argument == u"-h") {
            return ShowText{usage};
        } else if (reader.isOption(argument, u"--file")) {
            const auto file = reader.valueOf(argument, u"--file");
            if (!file || file->isEmpty()) return UsageError{"--file needs the name of a file."};
            ask.files += *file;
        } else if (reader.isOption(argument, u"--model")) {
            const auto model = reader.valueOf(argument, u"--model");
            if (!model || model->isEmpty()) return UsageError{"--model needs the id of a model."};
            ask.model = *model;
        } else {
            return UsageError{QStringLiteral("ask has no option %1.").arg(argument)};
        }
    }
    ask.prompt = words.join(u' ');
    return ask;
}

bool isHelp(const QString& argument) {
    return argument == u"--help" || argument == u"-h";
}

Command parseOpen(const QStringList& arguments) {
    if (arguments.size() == 2 && isHelp(arguments[1])) return ShowText{usage};
    if (arguments.size() != 2) return UsageError{"open needs one URL."};
    return OpenArguments{arguments[1]};
}

Command parseEnableAccessibility(const QStringList& arguments) {
    if (arguments.size() == 1) return EnableAccessibility{};
    if (arguments.size() == 2 && isHelp(arguments[1])) return ShowText{usage};
    return UsageError{"enable-accessibility takes no arguments."};
}

Command parseSwitchBackend(const QStringList& arguments) {
    if (arguments.size() == 1) return SwitchBackend{arguments[0] == u"enable-backend"};
    if (arguments.size() == 2 && isHelp(arguments[1])) return ShowText{usage};
    return UsageError{QStringLiteral("%1 takes no arguments.").arg(arguments[0])};
}

Command parseDesktop(const QStringList& arguments) {
    DesktopArguments desktop;
    for (const QString& argument : arguments) {
        const std::optional<Verb> verb = verbNamed(argument);
        const bool isFirst = desktop.verb == Verb::Launch && desktop.url.isEmpty();
        if (isHelp(argument)) {
            return ShowText{usage};
        } else if (argument == u"--background") {
            desktop.background = true;
        } else if (argument == u"--launched-at-login") {
            desktop.launchedAtLogin = true;
        } else if (verb && isFirst) {
            desktop.verb = *verb;
        } else if (argument.startsWith(u"vorq:", Qt::CaseInsensitive) && isFirst) {
            desktop.url = argument;
        } else if (argument.startsWith(u'-')) {
            return UsageError{QStringLiteral("There is no option %1.").arg(argument)};
        } else {
            return UsageError{isFirst ? QStringLiteral("There is no command %1.").arg(argument)
                                      : QStringLiteral("%1 is one too many.").arg(argument)};
        }
    }
    return desktop;
}

} // namespace

std::optional<Verb> verbNamed(const QString& name) {
    for (const auto& [verb, known] : verbs)
        if (name == QLatin1StringView(known)) return verb;
    return std::nullopt;
}

QString nameOf(Verb verb) {
    const auto found = std::ranges::find(verbs, verb, &std::pair<Verb, const char*>::first);
    return found == verbs.end() ? QString() : QString::fromLatin1(found->second);
}

Command parseCommandLine(const QStringList& arguments) {
    const QString verb = arguments.value(0);
    if (isHelp(verb) || verb == u"help") return ShowText{usage};
    if (verb == u"--version") return ShowText{QStringLiteral("vorq " VORQ_VERSION "\n")};
    if (verb == u"ask") return parseAsk(arguments);
    if (verb == u"notes" || verb == u"chats") return parseLibrary(arguments);
    if (verb == u"open") return parseOpen(arguments);
    if (verb == u"enable-accessibility") return parseEnableAccessibility(arguments);
    if (verb == u"enable-backend" || verb == u"disable-backend")
        return parseSwitchBackend(arguments);
    return parseDesktop(arguments);
}

} // namespace vorq
