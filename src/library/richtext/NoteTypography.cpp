#include "library/richtext/NoteTypography.h"

#include "support/text/Text.h"

#include <algorithm>
#include <array>

namespace vorq {
namespace {

constexpr QChar noBreakSpace = u'\u00A0';

struct StyleRow {
    QStringView family;
    double size;
    NoteFontWeight weight;
    NoteColor::Role color;
    NoteParagraphFormat paragraph;
};

constexpr StyleRow listRow = {.family = systemFontFamily,
                              .size = 17,
                              .weight = NoteFontWeight::Regular,
                              .color = NoteColor::Role::Label,
                              .paragraph = {.spacing = 4, .lineSpacing = 3}};

StyleRow rowOf(NoteTextStyle style) {
    using enum NoteFontWeight;
    using enum NoteColor::Role;
    switch (style) {
    case NoteTextStyle::Title:
        return {systemFontFamily, 28, Bold, Label, {.spacing = 12, .lineSpacing = 2}};
    case NoteTextStyle::Heading:
        return {systemFontFamily, 22, Bold, Label, {.spacing = 10, .lineSpacing = 2}};
    case NoteTextStyle::Subheading:
        return {systemFontFamily, 19, Semibold, Label, {.spacing = 8, .lineSpacing = 2}};
    case NoteTextStyle::Body:
        return {systemFontFamily, 17, Regular, Label, {.spacing = 6, .lineSpacing = 3}};
    case NoteTextStyle::Mono:
        return {monospacedFontFamily, 15, Regular, Label, {.spacing = 6, .lineSpacing = 2}};
    case NoteTextStyle::BulletedList:
    case NoteTextStyle::DashedList:
    case NoteTextStyle::NumberedList:
        return listRow;
    case NoteTextStyle::BlockQuote:
        return {systemFontFamily,
                17,
                Regular,
                SecondaryLabel,
                {.spacing = 6, .lineSpacing = 3, .headIndent = 18, .firstLineIndent = 18}};
    }
    Q_UNREACHABLE();
}

NoteAttributes attributesOf(NoteTextStyle style) {
    const StyleRow row = rowOf(style);
    NoteAttributes attributes;
    attributes.font = {
        .family = row.family.toString(), .size = row.size, .weight = row.weight, .isItalic = false};
    attributes.color.role = row.color;
    attributes.paragraph = row.paragraph;
    attributes.style = style;
    return attributes;
}

std::array<NoteAttributes, noteTextStyleCount> allAttributes() {
    std::array<NoteAttributes, noteTextStyleCount> all;
    for (int style = 0; style < noteTextStyleCount; ++style)
        all[static_cast<std::size_t>(style)] = attributesOf(static_cast<NoteTextStyle>(style));
    return all;
}

} // namespace

const NoteAttributes& NoteTypography::attributes(NoteTextStyle style) {
    static const std::array<NoteAttributes, noteTextStyleCount> all = allAttributes();
    return all[static_cast<std::size_t>(style)];
}

QString NoteTypography::listPrefix(NoteTextStyle style, qsizetype index) {
    switch (style) {
    case NoteTextStyle::BulletedList:
        return QString(u'•') + noBreakSpace;
    case NoteTextStyle::DashedList:
        return QString(u'–') + noBreakSpace;
    case NoteTextStyle::NumberedList:
        return QString::number(std::max<qsizetype>(index, 1)) + u'.' + noBreakSpace;
    default:
        return {};
    }
}

NoteFont NoteTypography::fontByTogglingBold(NoteFont font, bool isBold) {
    font.weight = isBold ? NoteFontWeight::Bold : NoteFontWeight::Regular;
    return font;
}

NoteRichText NoteTypography::document(QStringView plainUserNote) {
    const QString text = plainUserNote.toString().replace(u"\r\n"_qs, u"\n"_qs);
    const QStringView note = trimmed(text);
    NoteRichText document;
    if (note.isEmpty()) return document;
    const qsizetype lineEnd = note.indexOf(u'\n');
    const NoteAttributes& title = attributes(NoteTextStyle::Title);
    document.append(lineEnd < 0 ? note : note.first(lineEnd), title);
    document.append(u"\n", title);
    if (lineEnd >= 0) document.append(note.sliced(lineEnd + 1), attributes(NoteTextStyle::Body));
    return document;
}

} // namespace vorq
