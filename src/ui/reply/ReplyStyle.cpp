#include "ui/reply/ReplyStyle.h"

#include "ui/native/Fonts.h"

namespace vorq::ReplyStyle {
namespace {

using Kind = AssistantReplyDocument::Kind;

constexpr double codeStep = 1; // inline code is this much smaller than the text around it

} // namespace

Type typeOf(Kind kind) {
    switch (kind) {
    case Kind::Title:
        return {16.5, QFont::Bold, 1, 0, false};
    case Kind::Section:
        return {14.5, QFont::DemiBold, 1, 0, false};
    case Kind::Body:
        return {14.5, QFont::Medium, 1, 3.5, false};
    case Kind::Bullets:
    case Kind::Numbered:
        return {14.5, QFont::Medium, 1, 3, false};
    case Kind::Quote:
        return {14.5, QFont::Medium, 0.92, 0, false};
    case Kind::Code:
        return {12.5, QFont::Normal, 0.92, 2.5, true};
    case Kind::Table:
        return {13, QFont::Medium, 0.92, 0, false};
    case Kind::Divider:
        break;
    }
    return {};
}

double gapBetween(Kind before, Kind block) {
    if (before == Kind::Divider || block == Kind::Divider) return 12;
    if (before == Kind::Title && block == Kind::Body) return 6;
    if (before == Kind::Section &&
        (block == Kind::Body || block == Kind::Bullets || block == Kind::Numbered))
        return 6;
    if (before == Kind::Body && block == Kind::Section) return 14;
    return 10;
}

QFont::Weight heavier(QFont::Weight weight) {
    switch (weight) {
    case QFont::DemiBold:
        return QFont::Bold;
    case QFont::Bold:
        return QFont::ExtraBold;
    case QFont::ExtraBold:
    case QFont::Black:
        return QFont::Black;
    default:
        return QFont::DemiBold;
    }
}

QFont fontOf(const Type& type, double textScale) {
    const double size = type.size * textScale;
    return type.isMono ? Fonts::mono(size, type.weight) : Fonts::sans(size, type.weight);
}

QList<QTextLayout::FormatRange> formatsOf(const InlineSpans& parsed, const Type& type,
                                          const ReplyTheme& theme) {
    QList<QTextLayout::FormatRange> formats;
    for (const InlineSpans::Span& span : parsed.spans) {
        Type run = type;
        if (span.isStrong) run.weight = heavier(type.weight);
        if (span.isCode) {
            run.isMono = true;
            run.size = type.size - codeStep;
        }
        QFont font = fontOf(run, theme.textScale);
        font.setItalic(span.isEmphasized);
        font.setStrikeOut(span.isStruck);
        QTextLayout::FormatRange range;
        range.start = static_cast<int>(span.start);
        range.length = static_cast<int>(span.length);
        range.format.setFont(font);
        if (!span.link.isEmpty()) {
            range.format.setForeground(theme.link);
            range.format.setFontUnderline(true);
            range.format.setAnchor(true);
            range.format.setAnchorHref(span.link);
        }
        formats += range;
    }
    return formats;
}

} // namespace vorq::ReplyStyle
