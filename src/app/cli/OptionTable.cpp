#include "app/cli/OptionTable.h"

#include <algorithm>
#include <string>

namespace vorq {
namespace {

const OptionRow* rowNamed(QStringView name, std::span<const OptionRow> table) {
    const auto found = std::ranges::find_if(table, [&](const OptionRow& row) {
        return name == QLatin1StringView(row.name.data(), qsizetype(row.name.size()));
    });
    return found == table.end() ? nullptr : &*found;
}

bool isNegativeNumber(const QString& argument) {
    bool isNumber = false;
    argument.toDouble(&isNumber);
    return isNumber && argument.size() > 1 && (argument[1].isDigit() || argument[1] == u'.');
}

bool isWord(const QString& argument) {
    return !argument.startsWith(u'-') || argument == u"-" || isNegativeNumber(argument);
}

// Reads one argument that may be an option, and its value behind it. False where reading ends.
bool parseOption(ParsedOptions& parsed, const QStringList& arguments, qsizetype& at,
                 std::span<const OptionRow> table) {
    const QString& argument = arguments[at];
    const qsizetype equals = argument.indexOf(u'=');
    const OptionRow* row = rowNamed(QStringView(argument).left(equals), table);
    if (row == nullptr || (row->value.empty() && equals >= 0)) {
        parsed.unknown = argument;
        return false;
    }
    QString value;
    if (equals >= 0) {
        value = argument.mid(equals + 1);
    } else if (!row->value.empty() && at + 1 < arguments.size()) {
        value = arguments[++at];
    }
    if (value.isEmpty() && !row->value.empty()) {
        parsed.withoutValue = row;
        return false;
    }
    parsed.given.append({row, value});
    return true;
}

} // namespace

bool ParsedOptions::has(std::string_view name) const {
    return std::ranges::any_of(given, [&](const Given& each) { return each.row->name == name; });
}

QString ParsedOptions::value(std::string_view name) const {
    const QStringList all = values(name);
    return all.isEmpty() ? QString() : all.back();
}

QStringList ParsedOptions::values(std::string_view name) const {
    QStringList all;
    for (const Given& each : given)
        if (each.row->name == name) all += each.value;
    return all;
}

QString missingValue(const OptionRow& option) {
    return QString::fromStdString(std::string(option.name) + ' ' + std::string(option.missing));
}

bool isHelpOption(QStringView argument) {
    return argument == u"--help" || argument == u"-h";
}

ParsedOptions parseOptions(const QStringList& arguments, std::span<const OptionRow> table) {
    ParsedOptions parsed;
    for (qsizetype at = 0; at < arguments.size(); ++at) {
        const QString& argument = arguments[at];
        if (isWord(argument)) {
            parsed.words += argument;
        } else if (argument == u"--") {
            parsed.words += arguments.mid(at + 1);
            break;
        } else if (isHelpOption(argument)) {
            parsed.wantsHelp = true;
            break;
        } else if (!parseOption(parsed, arguments, at, table)) {
            break;
        }
    }
    return parsed;
}

} // namespace vorq
