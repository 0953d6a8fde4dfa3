#include "library/rtf/RtfBody.h"

#include "library/richtext/NoteTypography.h"
#include "support/text/Text.h"

#include <algorithm>
#include <utility>

namespace vorq {
namespace {

struct Marker {
    QString prefix;
    std::optional<NoteTextStyle> style;
};

bool isDigit(QChar unit) {
    return unit >= u'0' && unit <= u'9';
}

// The number of "12." and "12)", or 0.
qsizetype markerNumber(QStringView marker) {
    if (marker.size() < 2 || marker.size() > 9) return 0;
    const QStringView digits = marker.chopped(1);
    if (marker.back() != u'.' && marker.back() != u')') return 0;
    if (!std::all_of(digits.begin(), digits.end(), isDigit)) return 0;
    return digits.toInt();
}

// What stands for any other marker of a word processor keeps its text.
Marker markerOf(QStringView text) {
    static constexpr QStringView bullets = u"•·‣◦●○■□▪▫◆◇►➢✓*oO§";
    const QStringView marker = trimmed(text);
    if (marker.isEmpty()) return {};
    const bool isSymbol = marker.size() == 1 && marker.front().unicode() >= 0xE000 &&
                          marker.front().unicode() <= 0xF8FF;
    auto style = NoteTextStyle::BulletedList;
    const qsizetype number = markerNumber(marker);
    if (number > 0)
        style = NoteTextStyle::NumberedList;
    else if (marker == u"–" || marker == u"—" || marker == u"-")
        style = NoteTextStyle::DashedList;
    else if (!isSymbol && (marker.size() != 1 || !bullets.contains(marker)))
        return {marker.toString() + u'\u00A0', std::nullopt};
    return {NoteTypography::listPrefix(style, number), style};
}

} // namespace

void RtfBody::append(QStringView text, const RtfFormat& format, const RtfTables& tables) {
    if (text.isEmpty()) return;
    const NoteAttributes attributes = format.characterAttributes(tables);
    if (m_cellEnds > 0)
        m_paragraph.append(QString(std::exchange(m_cellEnds, 0), u'\t'), attributes);
    m_paragraph.append(text, attributes);
}

void RtfBody::endParagraph(const RtfFormat& format, const RtfTables& tables) {
    m_paragraph.append(u"\n", format.characterAttributes(tables));
    settleParagraph(format, tables);
}

void RtfBody::endRow(const RtfFormat& format, const RtfTables& tables) {
    m_cellEnds = 0;
    endParagraph(format, tables);
}

void RtfBody::endDocument(const RtfFormat& format, const RtfTables& tables) {
    settleParagraph(format, tables);
}

void RtfBody::settleParagraph(const RtfFormat& format, const RtfTables& tables) {
    const Marker marker = markerOf(std::exchange(m_marker, {}));
    NoteRichText paragraph;
    if (!marker.prefix.isEmpty() && !m_paragraph.isEmpty())
        paragraph.append(marker.prefix, m_paragraph.runs().front().attributes);
    paragraph.append(std::exchange(m_paragraph, {}));
    paragraph.change(0, paragraph.length(), [&](NoteAttributes& attributes) {
        format.applyToParagraph(attributes, tables);
        if (marker.style) attributes.style = marker.style;
    });
    m_text.append(paragraph);
}

} // namespace vorq
