#pragma once

#include <string>
#include <vector>

namespace vorq::packaging {

// The commands of a program, as manual page and completions need them: what both programs' tables
// have in common.

struct Option {
    std::string name;
    std::string value; ///< "" for one that takes none
    std::string help;
    std::vector<std::string> choices; ///< all values there are; empty if there are others
    bool namesFile = false;
    bool isRepeatable = false;
};

struct Command {
    std::vector<std::string> names; ///< alternatives, each behind the section's words
    std::string operands;
    std::string help; ///< "" where the next command's is this one's, too
    std::vector<Option> options;
    std::vector<std::string> choices; ///< all words that may stand behind it
};

struct Section {
    std::string words; ///< between the program's name and the commands', such as "notes"
    std::string heading;
    std::vector<Command> commands;
    std::string remark;
    std::vector<Option> options; ///< of the program, whatever the command
};

struct Program {
    std::string name;
    std::string summary;
    std::string introduction;
    std::vector<Section> sections;
    std::string remarks;
    std::string seeAlso;
};

[[nodiscard]] Program desktopProgram();
[[nodiscard]] Program gatewayProgram();

/// Its paragraph as one line.
[[nodiscard]] std::string flowing(std::string text);

/// The first clause of the help of commands[index].
[[nodiscard]] std::string briefOf(const Section& section, std::size_t index);

} // namespace vorq::packaging
