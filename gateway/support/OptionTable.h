#pragma once

#include <expected>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// One option of a command; each takes a value. The command line, the help, the manual page and
/// the completions of shells are made of these rows.
struct OptionRow {
    std::string_view name;  ///< with its dashes
    std::string_view value; ///< what the help calls its value
    std::string_view help;
    bool namesFile = false;
    int largest = 0; ///< of a number, which begins at 0; 0 for a value that is no number
};

struct CommandRow {
    std::string_view name;
    std::string_view help;
    std::span<const OptionRow> options;
};

/// What --help shows.
struct CommandPage {
    std::string_view program;
    std::string_view summary;
    std::span<const CommandRow> rows;
    std::span<const OptionRow> options; ///< of all rows
    std::string_view remarks;
};

struct GivenOption {
    std::string_view name;
    std::string value;
    int number = 0; ///< the value of a number
};

/// The arguments of a command, told apart.
struct ParsedOptions {
    std::vector<GivenOption> options; ///< as they were given; the last of a name counts
    bool wantsHelp = false;
};

/// Reads "--name value" and "--name=value" up to the first --help or -h; else a sentence about
/// what is wrong.
[[nodiscard]] std::expected<ParsedOptions, std::string>
parseOptions(const CommandRow& command, std::span<const std::string> arguments);

[[nodiscard]] bool isHelpOption(std::string_view argument);

/// The text of --help.
[[nodiscard]] std::string helpText(const CommandPage& page);

} // namespace vorq::gateway
