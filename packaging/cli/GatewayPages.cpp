#include "CommandPages.h"
#include "cli/CommandTable.h"

namespace vorq::packaging {

Program gatewayProgram() {
    const gateway::CommandPage& page = gateway::commandPage();
    Section section{
        .words = "", .heading = "Commands:", .commands = {}, .remark = "", .options = {}};
    for (const gateway::CommandRow& row : page.rows) {
        Command command{{std::string(row.name)}, "", std::string(row.help), {}, {}};
        for (const gateway::OptionRow& option : row.options)
            command.options.push_back({std::string(option.name),
                                       std::string(option.value),
                                       std::string(option.help),
                                       {},
                                       option.namesFile,
                                       false});
        section.commands.push_back(std::move(command));
    }
    section.commands.push_back({{"--help", "--version"}, "", "", {}, {}});
    return {.name = std::string(page.program),
            .summary = "the backend of Vorq, on this computer",
            .introduction = "vorq-gateway answers Vorq over HTTP on this computer.",
            .sections = {std::move(section)},
            .remarks = std::string(page.remarks),
            .seeAlso = "vorq"};
}

} // namespace vorq::packaging
