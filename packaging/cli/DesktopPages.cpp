#include "CommandPages.h"
#include "app/cli/CommandTables.h"

#include <sstream>

namespace vorq::packaging {
namespace {

std::vector<std::string> divided(std::string_view text) {
    std::vector<std::string> parts;
    std::istringstream stream{std::string(text)};
    for (std::string part; std::getline(stream, part, '|');)
        parts.push_back(part);
    return parts;
}

std::vector<Option> optionsOf(std::span<const OptionRow> rows) {
    std::vector<Option> options;
    for (const OptionRow& row : rows)
        options.push_back({std::string(row.name), std::string(row.value), std::string(row.help),
                           divided(row.choices), row.namesFile, row.isRepeatable});
    return options;
}

Section sectionOf(const std::string& words, const CommandSection& table) {
    Section section{
        words, std::string(table.heading), {}, std::string(table.remark), optionsOf(table.options)};
    if (section.heading.empty()) section.heading = "Under vorq " + words + ":";
    for (const CommandRow& row : table.rows)
        section.commands.push_back({divided(row.names), std::string(row.operands),
                                    std::string(row.help), optionsOf(row.options),
                                    divided(row.choices)});
    return section;
}

} // namespace

Program desktopProgram() {
    const std::span<const CommandPage> pages = commandPages();
    Program program{.name = std::string(pages.front().program),
                    .summary = "desktop AI assistant",
                    .introduction = std::string(pages.front().introduction),
                    .sections = {},
                    .remarks = std::string(pages.front().remarks),
                    .seeAlso = "vorq-gateway"};
    for (const CommandPage& page : pages) {
        const std::size_t nameEnd = program.name.size() + 1;
        const std::string words(page.program.substr(std::min(nameEnd, page.program.size())));
        for (const CommandSection& section : page.sections)
            program.sections.push_back(sectionOf(words, section));
        if (!words.empty()) program.sections.back().remark = std::string(page.remarks);
    }
    return program;
}

} // namespace vorq::packaging
