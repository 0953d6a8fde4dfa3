#include "platform/linux/atspi/AtSpiText.h"

#include <algorithm>

namespace vorq {
namespace {

constexpr char16_t mark = u'\uFEFF';

bool isPairAt(QStringView text, qsizetype index) {
    return text[index].isHighSurrogate() && index + 1 < text.size() &&
           text[index + 1].isLowSurrogate();
}

} // namespace

AtSpiToolkit atSpiToolkit(QStringView name, QStringView application) {
    using enum AtSpiToolkit::Unit;
    if (name == u"Qt")
        return {.unit = Utf16, .countsInsertedUnits = true, .misplacesParagraphs = true};
    if (name == u"Gecko")
        return {.unit = Utf16, .marksWideCharacters = true, .tellsPlacesLate = true};
    // It says that it is made with GTK, but answers by itself.
    if (application == u"soffice")
        return {.unit = Utf16, .splitsParagraphs = true, .placesOverMenu = true};
    if (name == u"Chromium")
        return {.tellsAllSelections = false,
                .miscountsWideCharacters = true,
                .placesPagesInPixels = true};
    if (name == u"GTK") return {.placesInWindow = true};
    return {};
}

bool hasWideCharacters(QStringView text) {
    return std::ranges::any_of(text, [](QChar unit) { return unit.isSurrogate(); });
}

QString withoutMarks(QString text, const AtSpiToolkit& toolkit) {
    if (!toolkit.marksWideCharacters || !text.contains(QChar(mark))) return text;
    QString kept;
    kept.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text[i] != QChar(mark) || i == 0 || !text[i - 1].isLowSurrogate()) kept += text[i];
    return kept;
}

std::int64_t utf16Offset(std::int64_t offset, QStringView text, const AtSpiToolkit& toolkit) {
    if (toolkit.unit == AtSpiToolkit::Unit::Utf16)
        return std::min<std::int64_t>(offset, text.size());
    qsizetype index = 0;
    for (; offset > 0 && index < text.size(); --offset)
        index += isPairAt(text, index) ? 2 : 1;
    return index;
}

std::int64_t toolkitOffset(std::int64_t utf16, QStringView text, const AtSpiToolkit& toolkit) {
    if (toolkit.unit == AtSpiToolkit::Unit::Utf16) return utf16;
    std::int64_t offset = 0;
    for (qsizetype index = 0; index < text.size();) {
        index += isPairAt(text, index) ? 2 : 1;
        if (index > utf16) break;
        ++offset;
    }
    return offset;
}

} // namespace vorq
