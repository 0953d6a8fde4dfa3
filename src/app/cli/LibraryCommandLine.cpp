#include "app/cli/LibraryCommandLine.h"

#include "app/cli/CommandTables.h"
#include "app/cli/HelpText.h"
#include "support/RawNames.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Parsed = std::variant<LibraryCommand, LibraryHelp, LibraryMisuse>;

// By their names, and by those of files.
constexpr auto noteFormats = rawNames<NoteFormat>({{NoteFormat::Markdown, "markdown"},
                                                   {NoteFormat::Markdown, "md"},
                                                   {NoteFormat::Plain, "plain"},
                                                   {NoteFormat::Plain, "txt"},
                                                   {NoteFormat::Rtf, "rtf"}});

// Leaves the area as it is without the option.
std::optional<LibraryMisuse> readArea(const ParsedOptions& parsed, std::optional<HubArea>& area) {
    if (!parsed.has("--area")) return std::nullopt;
    area = hubAreaNamed(parsed.value("--area"));
    if (area) return std::nullopt;
    return LibraryMisuse{u"There is no area %1."_s.arg(parsed.value("--area"))};
}

Parsed parseNotesList(const ParsedOptions& parsed) {
    ListNotes command;
    if (const auto misuse = readArea(parsed, command.area)) return *misuse;
    if (!parsed.words.isEmpty()) return LibraryMisuse{u"notes list takes no ID."_s};
    command.asJson = parsed.has("--json");
    return command;
}

Parsed parseNotesSave(const ParsedOptions& parsed) {
    std::optional<HubArea> area;
    if (const auto misuse = readArea(parsed, area)) return *misuse;
    const QString text = parsed.words.join(u' ');
    return SaveNote{text == u"-" ? QString() : text, parsed.value("--title"),
                    area.value_or(HubArea::Personal), parsed.has("--plain")};
}

Parsed parseNotesExport(const ParsedOptions& parsed) {
    if (parsed.words.size() != 1) return LibraryMisuse{u"notes export needs one ID."_s};
    ExportNote command;
    command.id = parsed.words.front();
    command.output = parsed.value("--output");
    if (const QString name = parsed.value("--format"); !name.isEmpty()) {
        const auto format = noteFormats.caseOf(QStringView(name));
        if (!format) return LibraryMisuse{u"There is no format %1."_s.arg(name)};
        command.format = *format;
    } else {
        const QString suffix = command.output.section(u'.', -1).toLower();
        command.format = noteFormats.caseOf(QStringView(suffix)).value_or(NoteFormat::Markdown);
    }
    return command;
}

template<typename Show>
Parsed parseShow(const ParsedOptions& parsed, const QString& verb) {
    if (parsed.words.size() != 1) return LibraryMisuse{u"%1 show needs one ID."_s.arg(verb)};
    return Show{parsed.words.front(), parsed.has("--json")};
}

Parsed parseChatsList(const ParsedOptions& parsed) {
    if (!parsed.words.isEmpty()) return LibraryMisuse{u"chats list takes no ID."_s};
    return ListChats{parsed.has("--json")};
}

} // namespace

Parsed parseLibraryCommand(const QStringList& arguments) {
    const QString& verb = arguments.front();
    const CommandPage& page = commandPages()[verb == u"notes" ? 1 : 2];
    if (arguments.size() < 2) return LibraryMisuse{u"%1 needs a command."_s.arg(verb)};
    const QString action = verb + u' ' + arguments[1];
    if (isHelpOption(arguments[1])) return LibraryHelp{helpText(page)};

    const CommandRow* row = commandNamed(page, arguments[1]);
    const ParsedOptions parsed =
        parseOptions(arguments.sliced(2), row == nullptr ? CommandRow{}.options : row->options);
    if (parsed.wantsHelp) return LibraryHelp{helpText(page)};
    if (!parsed.unknown.isEmpty())
        return LibraryMisuse{
            u"%1 has no option %2."_s.arg(action, parsed.unknown.section(u'=', 0, 0))};
    if (parsed.withoutValue != nullptr) return LibraryMisuse{missingValue(*parsed.withoutValue)};
    if (action == u"notes list") return parseNotesList(parsed);
    if (action == u"notes show") return parseShow<ShowNote>(parsed, verb);
    if (action == u"notes save") return parseNotesSave(parsed);
    if (action == u"notes export") return parseNotesExport(parsed);
    if (action == u"chats list") return parseChatsList(parsed);
    if (action == u"chats show") return parseShow<ShowChat>(parsed, verb);
    return LibraryMisuse{u"There is no command %1."_s.arg(action)};
}

} // namespace vorq
