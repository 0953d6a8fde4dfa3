#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <span>
#include <string_view>

namespace vorq {

/// One option of a command. The command line, the help, the manual page and the completions of
/// shells are made of these rows.
struct OptionRow {
    std::string_view name;  ///< with its dashes
    std::string_view value; ///< what the help calls its value; "" for one that takes none
    std::string_view help;
    std::string_view missing = "needs a value."; ///< said behind the name when the value is missing
    std::string_view choices = {};               ///< all values there are, divided by '|'
    bool namesFile = false;
    bool isRepeatable = false;
};

/// One command, or alternatives divided by '|' that share their help.
struct CommandRow {
    std::string_view names;
    std::string_view operands = {}; ///< as the help has them
    std::string_view help = {};     ///< "" where the next row's help is this one's, too
    std::span<const OptionRow> options = {};
    bool helpListsOptions = false; ///< else its text speaks of them
    std::string_view choices = {}; ///< all words that may stand behind it, divided by '|'
};

struct CommandSection {
    std::string_view heading;
    std::span<const CommandRow> rows;
    bool isBrief = false; ///< a command and its help share a line
    std::string_view remark = {};
    std::span<const OptionRow> options = {}; ///< of all its rows
};

/// What one --help shows.
struct CommandPage {
    std::string_view program; ///< with the command that the page is of, such as "vorq notes"
    std::string_view operands;
    std::string_view introduction;
    std::span<const CommandSection> sections;
    std::string_view remarks;
};

/// The arguments of a command, told apart.
struct ParsedOptions {
    QStringList words;
    bool wantsHelp = false;
    QString unknown;                         ///< as typed; "" if all options are known
    const OptionRow* withoutValue = nullptr; ///< nothing if all options have their values

    [[nodiscard]] bool has(std::string_view name) const;
    /// The last one given; "" for none.
    [[nodiscard]] QString value(std::string_view name) const;
    [[nodiscard]] QStringList values(std::string_view name) const;

    struct Given {
        const OptionRow* row;
        QString value;
    };
    QList<Given> given;
};

/// "--name value" and "--name=value"; all behind "--" are words, and so are "-" and negative
/// numbers. Ends at the first --help or -h, unknown option or missing value.
[[nodiscard]] ParsedOptions parseOptions(const QStringList& arguments,
                                         std::span<const OptionRow> table);

/// The sentence on an option whose value is missing.
[[nodiscard]] QString missingValue(const OptionRow& option);

[[nodiscard]] bool isHelpOption(QStringView argument);

} // namespace vorq
