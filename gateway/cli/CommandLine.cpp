#include "cli/CommandLine.h"

#include "cli/CommandTable.h"
#include "support/Filled.h"

#include <algorithm>
#include <span>

namespace vorq::gateway {
namespace {

using Verb = CommandLine::Verb;

Verb verbOf(const std::string& name) {
    if (name == "serve") return Verb::Serve;
    if (name == "handoff") return Verb::Handoff;
    return name == "reset-link" ? Verb::ResetLink : Verb::Version;
}

void apply(CommandLine& line, const GivenOption& option) {
    if (option.name == "--data") line.dataFolder = option.value;
    if (option.name == "--database") line.database = option.value;
    if (option.name == "--public-url") line.publicUrl = option.value;
    if (option.name == "--email") line.email = option.value;
    if (option.name == "--host") line.host = option.value;
    if (option.name == "--config") line.configFile = option.value;
    if (option.name == "--port") line.port = option.number;
    if (option.name == "--stream-delay")
        line.streamDelay = std::chrono::milliseconds(option.number);
}

} // namespace

std::expected<CommandLine, std::string>
parseCommandLine(const std::vector<std::string>& arguments) {
    if (arguments.empty())
        return std::unexpected("Tell me what to do: serve, handoff or reset-link.");
    const std::string& name = arguments.front();
    CommandRow row{.name = name, .help = "", .options = {}};
    const auto command = std::ranges::find(commandPage().rows, name, &CommandRow::name);
    if (command != commandPage().rows.end()) {
        row = *command;
    } else if (!isHelpOption(name) && name != "--version") {
        return std::unexpected(filled("There is no command \"{}\".", name));
    }
    const auto parsed = parseOptions(row, std::span(arguments).subspan(1));
    if (!parsed) return std::unexpected(parsed.error());
    CommandLine line;
    if (parsed->wantsHelp || isHelpOption(name)) return line;
    line.verb = verbOf(name);
    for (const GivenOption& option : parsed->options)
        apply(line, option);
    return line;
}

std::string usage() {
    return helpText(commandPage());
}

} // namespace vorq::gateway
