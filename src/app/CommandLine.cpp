#include "app/CommandLine.h"

namespace vorq {
namespace {

const QString usage = QStringLiteral(
    "Usage: vorq COMMAND\n"
    "\n"
    "  vorq ask [--file F]... [--model ID] PROMPT\n"
    "        Answers a prompt in the terminal. Text on standard input counts as the\n"
    "        highlighted text; without a PROMPT it is analysed. It is read to its end:\n"
    "        use </dev/null where it stays open without a text, as in some schedulers.\n"
    "        --file F     attaches a text or an image; may be given several times\n"
    "        --model ID   asks for this model instead of the chosen one\n"
    "  vorq open URL\n"
    "        Takes a vorq:// link, such as the one that ends a sign-in.\n"
    "  vorq --help | --version\n"
    "\n"
    "Environment: VORQ_API_BASE_URL is the address of the backend\n"
    "(http://127.0.0.1:8787 unless told otherwise).\n");

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

} // namespace

Command parseCommandLine(const QStringList& arguments) {
    if (arguments.isEmpty()) return UsageError{"A command is missing."};
    const QString& verb = arguments.front();
    if (verb == u"--help" || verb == u"-h" || verb == u"help") return ShowText{usage};
    if (verb == u"--version") return ShowText{QStringLiteral("vorq " VORQ_VERSION "\n")};
    if (verb == u"ask") return parseAsk(arguments);
    if (verb == u"open") {
        if (arguments.size() == 2 && (arguments[1] == u"--help" || arguments[1] == u"-h"))
            return ShowText{usage};
        if (arguments.size() != 2) return UsageError{"open needs one URL."};
        return OpenArguments{arguments[1]};
    }
    return UsageError{QStringLiteral("There is no command %1.").arg(verb)};
}

} // namespace vorq
