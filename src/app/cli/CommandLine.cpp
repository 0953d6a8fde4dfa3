#include "app/cli/CommandLine.h"

#include "app/cli/CommandTables.h"
#include "app/cli/HelpText.h"
#include "support/RawNames.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr auto verbs = rawNamesOfSome<Verb>({{Verb::Summon, "summon"},
                                             {Verb::Note, "note"},
                                             {Verb::PushNote, "push-note"},
                                             {Verb::Clear, "clear"},
                                             {Verb::Rewrite, "rewrite"},
                                             {Verb::Toggle, "toggle"},
                                             {Verb::Settings, "settings"},
                                             {Verb::Doctor, "doctor"},
                                             {Verb::SaveChat, "save-chat"},
                                             {Verb::Quit, "quit"}});

ShowText programHelp() {
    return ShowText{helpText(commandPages().front())};
}

ParsedOptions optionsBehind(const QStringList& arguments) {
    const CommandRow* row = commandNamed(commandPages().front(), arguments.front());
    return parseOptions(arguments.sliced(1), row->options);
}

Command parseAsk(const QStringList& arguments) {
    const ParsedOptions parsed = optionsBehind(arguments);
    if (parsed.wantsHelp) return programHelp();
    if (!parsed.unknown.isEmpty())
        return UsageError{u"ask has no option %1."_s.arg(parsed.unknown)};
    if (parsed.withoutValue != nullptr) return UsageError{missingValue(*parsed.withoutValue)};
    return AskArguments{parsed.words.join(u' '), parsed.values("--file"), parsed.value("--model")};
}

Command parseLibrary(const QStringList& arguments) {
    const auto parsed = parseLibraryCommand(arguments);
    if (const auto* help = std::get_if<LibraryHelp>(&parsed)) return ShowText{help->text};
    if (const auto* misuse = std::get_if<LibraryMisuse>(&parsed))
        return UsageError{misuse->message};
    return std::get<LibraryCommand>(parsed);
}

Command parseOpen(const QStringList& arguments) {
    const ParsedOptions parsed = optionsBehind(arguments);
    UsageError misuse{"open needs one URL."};
    if (parsed.words.size() > 1) return misuse;
    if (parsed.wantsHelp) return programHelp();
    if (!parsed.unknown.isEmpty() || parsed.words.isEmpty()) return misuse;
    return OpenArguments{parsed.words.front()};
}

// A command that is its name alone.
Command parseAlone(const QStringList& arguments, const Command& command) {
    const ParsedOptions parsed = optionsBehind(arguments);
    UsageError misuse{u"%1 takes no arguments."_s.arg(arguments.front())};
    if (!parsed.words.isEmpty()) return misuse;
    if (parsed.wantsHelp) return programHelp();
    if (!parsed.unknown.isEmpty()) return misuse;
    return command;
}

Command parseDoctor(const QStringList& arguments) {
    const ParsedOptions parsed = optionsBehind(arguments);
    if (!parsed.words.isEmpty()) return UsageError{u"doctor takes no words."_s};
    if (parsed.wantsHelp) return programHelp();
    if (!parsed.unknown.isEmpty())
        return UsageError{u"doctor has no option %1."_s.arg(parsed.unknown)};
    const bool asJson = parsed.has("--json");
    if (!parsed.has("--window")) return Doctor{.asJson = asJson};
    if (asJson) return UsageError{u"doctor takes one of --json and --window."_s};
    DesktopArguments shown;
    shown.verb = Verb::Doctor;
    return shown;
}

const CommandPage& previewPage() {
    return commandPages().back();
}

// The sentence on a name that is none's; "" for one that is.
QString whyNoPreview(const QString& name) {
    if (previewNames.caseOf(QStringView(name))) return {};
    const QString there = u"there are hub, writing and watch."_s;
    if (name.isEmpty()) return u"A preview has a name: "_s + there;
    return u"There is no preview %1: "_s.arg(name) + there;
}

Command parsePreview(const QStringList& arguments) {
    const ParsedOptions parsed = optionsBehind(arguments);
    const QString name = parsed.words.value(0);
    const QString state = parsed.words.value(1);
    const std::optional<Preview> preview = previewNames.caseOf(QStringView(name));
    if (!parsed.words.isEmpty())
        if (const QString reason = whyNoPreview(name); !reason.isEmpty()) return UsageError{reason};
    if (parsed.wantsHelp) return ShowText{helpText(previewPage())};
    if (!parsed.unknown.isEmpty())
        return UsageError{u"preview has no option %1."_s.arg(parsed.unknown)};
    if (parsed.words.isEmpty()) return ListPreviews{};
    if (parsed.words.size() > 2) return UsageError{u"%1 is one too many."_s.arg(parsed.words[2])};
    if (!preview || parsed.words.size() != 2 || (state != u"on" && state != u"off"))
        return UsageError{u"preview %1 takes one word more, on or off."_s.arg(name)};
    return SwitchPreview{*preview, state == u"on"};
}

Command parseDesktop(const QStringList& arguments) {
    const CommandSection& section = commandPages().front().sections.front();
    const ParsedOptions parsed = parseOptions(arguments, section.options);
    DesktopArguments desktop;
    desktop.background = parsed.has("--background");
    desktop.launchedAtLogin = parsed.has("--launched-at-login");
    // A slip in a script must not be taken for success.
    for (const QString& word : parsed.words) {
        const std::optional<Verb> verb = verbNamed(word);
        const bool isFirst = desktop.verb == Verb::Launch && desktop.url.isEmpty();
        if (!isFirst) return UsageError{u"%1 is one too many."_s.arg(word)};
        // It takes options of its own.
        if (verb && *verb != Verb::Doctor) {
            desktop.verb = *verb;
        } else if (word.startsWith(u"vorq:", Qt::CaseInsensitive)) {
            desktop.url = word;
        } else {
            return UsageError{commandNamed(commandPages().front(), word)
                                  ? u"Nothing may stand before %1."_s.arg(word)
                                  : u"There is no command %1."_s.arg(word)};
        }
    }
    if (parsed.wantsHelp) return programHelp();
    if (!parsed.unknown.isEmpty())
        return UsageError{u"There is no option %1."_s.arg(parsed.unknown)};
    if (parsed.withoutValue != nullptr) return UsageError{missingValue(*parsed.withoutValue)};
    for (const QString& name : parsed.values("--preview")) {
        if (const QString reason = whyNoPreview(name); !reason.isEmpty()) return UsageError{reason};
        if (const auto preview = previewNames.caseOf(QStringView(name)))
            desktop.previews += *preview;
    }
    return desktop;
}

} // namespace

std::optional<Verb> verbNamed(const QString& name) {
    return verbs.caseOf(QStringView(name));
}

QString nameOf(Verb verb) {
    return verbs.nameOf(verb);
}

QString sentenceOn(Preview preview) {
    const CommandRow* row = commandNamed(previewPage(), previewNames.nameOf(preview));
    return QString::fromUtf8(row->help.data(), qsizetype(row->help.size())).replace(u'\n', u' ');
}

Command parseCommandLine(const QStringList& arguments) {
    const QString name = arguments.value(0);
    if (isHelpOption(name) || name == u"help") return programHelp();
    if (name == u"--version") return ShowText{QStringLiteral("vorq " VORQ_VERSION "\n")};
    if (name == u"ask") return parseAsk(arguments);
    if (name == u"notes" || name == u"chats") return parseLibrary(arguments);
    if (name == u"open") return parseOpen(arguments);
    if (name == u"enable-accessibility") return parseAlone(arguments, EnableAccessibility{});
    if (name == u"enable-backend" || name == u"disable-backend")
        return parseAlone(arguments, SwitchBackend{name == u"enable-backend"});
    if (name == u"doctor") return parseDoctor(arguments);
    if (name == u"preview") return parsePreview(arguments);
    return parseDesktop(arguments);
}

} // namespace vorq
