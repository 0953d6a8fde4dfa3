#include "app/cli/HelpText.h"

#include <algorithm>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype helpIndent = 8;
constexpr qsizetype commandGap = 4; // between the widest command and its help
constexpr qsizetype optionGap = 3;

QString textOf(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString usageOf(const OptionRow& option) {
    const QString name = textOf(option.name);
    return option.value.empty() ? name : name + u' ' + textOf(option.value);
}

QString titleOf(const CommandPage& page, const CommandRow& row) {
    QString title = textOf(page.program) + u' ' + textOf(row.names).replace(u'|', u" | "_s);
    for (const OptionRow& option : row.options)
        title += u" ["_s + usageOf(option) + (option.isRepeatable ? u"]..."_s : u"]"_s);
    return row.operands.empty() ? title : title + u' ' + textOf(row.operands);
}

QString indented(std::string_view lines) {
    QString text;
    for (const QString& line : textOf(lines).split(u'\n'))
        text += QString(helpIndent, u' ') + line + u'\n';
    return text;
}

QString optionLines(std::span<const OptionRow> options) {
    qsizetype width = 0;
    for (const OptionRow& option : options)
        width = std::max(width, usageOf(option).size() + optionGap);
    QString text;
    for (const OptionRow& option : options)
        text += QString(helpIndent, u' ') + usageOf(option).leftJustified(width) +
                textOf(option.help) + u'\n';
    return text;
}

QString briefLines(const CommandPage& page, std::span<const CommandRow> rows) {
    qsizetype width = 0;
    for (const CommandRow& row : rows)
        width = std::max(width, titleOf(page, row).size() + commandGap);
    QString text;
    for (const CommandRow& row : rows)
        text += u"  "_s + titleOf(page, row).leftJustified(width) + textOf(row.help) + u'\n';
    return text;
}

QString fullLines(const CommandPage& page, std::span<const CommandRow> rows) {
    QString text;
    for (const CommandRow& row : rows) {
        text += u"  "_s + titleOf(page, row) + u'\n';
        if (!row.help.empty()) text += indented(row.help);
        if (row.helpListsOptions) text += optionLines(row.options);
    }
    return text;
}

QString sectionText(const CommandPage& page, const CommandSection& section) {
    QString text;
    if (!section.heading.empty()) text += textOf(section.heading) + u'\n';
    text += section.isBrief ? briefLines(page, section.rows) : fullLines(page, section.rows);
    if (!section.remark.empty()) text += textOf(section.remark) + u'\n';
    return text + optionLines(section.options);
}

} // namespace

QString helpText(const CommandPage& page) {
    QString text = u"Usage: "_s + textOf(page.program) + u' ' + textOf(page.operands) + u"\n\n"_s;
    if (!page.introduction.empty()) text += textOf(page.introduction) + u"\n\n"_s;
    for (const CommandSection& section : page.sections)
        text += sectionText(page, section) + u'\n';
    return text + textOf(page.remarks) + u'\n';
}

} // namespace vorq
