#include "support/OptionTable.h"

#include "support/Filled.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace vorq::gateway {
namespace {

constexpr std::size_t kHelpGap = 3; // between the widest name and its help

std::expected<int, std::string> numberIn(const OptionRow& option, const std::string& text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    if (!isWhole || value < 0 || value > option.largest) {
        return std::unexpected(filled("{} takes a number from 0 to {}, not \"{}\".", option.name,
                                      option.largest, text));
    }
    return value;
}

std::expected<GivenOption, std::string> givenOption(const OptionRow& option, std::string value) {
    if (value.empty()) return std::unexpected(filled("{} needs a value.", option.name));
    if (option.largest == 0) return GivenOption{option.name, std::move(value)};
    const auto number = numberIn(option, value);
    if (!number) return std::unexpected(number.error());
    return GivenOption{option.name, std::move(value), *number};
}

std::string usageOf(const OptionRow& option) {
    return filled("{} {}", option.name, option.value);
}

std::string paddedTo(std::size_t width, std::string text) {
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

std::string usageLines(const CommandPage& page) {
    std::string text = "Usage:\n";
    for (const CommandRow& row : page.rows) {
        text += filled("  {} {}", page.program, row.name);
        for (const OptionRow& option : row.options)
            text += filled(" [{}]", usageOf(option));
        text += '\n';
    }
    return text + filled("  {} --help | --version\n", page.program);
}

} // namespace

bool isHelpOption(std::string_view argument) {
    return argument == "--help" || argument == "-h";
}

std::expected<ParsedOptions, std::string> parseOptions(const CommandRow& command,
                                                       std::span<const std::string> arguments) {
    ParsedOptions parsed;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (isHelpOption(argument)) {
            parsed.wantsHelp = true;
            return parsed;
        }
        const std::size_t equals = argument.starts_with("--") ? argument.find('=') : argument.npos;
        const std::string name = argument.substr(0, equals);
        const auto row = std::ranges::find(command.options, name, &OptionRow::name);
        if (row == command.options.end())
            return std::unexpected(filled("{} takes no \"{}\".", command.name, name));
        std::string value;
        if (equals != argument.npos) {
            value = argument.substr(equals + 1);
        } else if (i + 1 < arguments.size()) {
            value = arguments[++i];
        }
        auto given = givenOption(*row, std::move(value));
        if (!given) return std::unexpected(std::move(given.error()));
        parsed.options.push_back(*std::move(given));
    }
    return parsed;
}

std::string helpText(const CommandPage& page) {
    std::string text = filled("{}: {}\n\n", page.program, page.summary) + usageLines(page) + '\n';
    std::size_t width = 0;
    for (const CommandRow& row : page.rows)
        width = std::max(width, row.name.size() + kHelpGap);
    for (const CommandRow& row : page.rows)
        text += filled("{}{}\n", paddedTo(width, std::string(row.name)), row.help);
    text += '\n';
    width = 0;
    for (const OptionRow& option : page.options)
        width = std::max(width, usageOf(option).size() + kHelpGap);
    for (const OptionRow& option : page.options)
        text += filled("  {}{}\n", paddedTo(width, usageOf(option)), option.help);
    return text + '\n' + std::string(page.remarks) + '\n';
}

} // namespace vorq::gateway
