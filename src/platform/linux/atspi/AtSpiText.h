#pragma once

#include "platform/Accessibility.h"

#include <QString>
#include <QStringView>

#include <optional>

namespace vorq {

/// Stands for an object within a text.
constexpr QChar objectCharacter(u'\uFFFC');

/// What a toolkit does its own way on the accessibility bus.
struct AtSpiToolkit {
    enum class Unit { CodePoint, Utf16 };

    /// What offsets and lengths of text count.
    Unit unit = Unit::CodePoint;
    /// Whether the length that comes with a text to insert counts UTF-16 units, and not bytes.
    bool countsInsertedUnits = false;
    /// Whether a mark follows each character beyond the basic plane, so that offsets come out as
    /// UTF-16 units.
    bool marksWideCharacters = false;
    /// Whether no selection means that nothing is selected; one toolkit forgets some.
    bool tellsAllSelections = true;
    /// Whether a selection is told at wrong offsets in a text with characters beyond the basic
    /// plane.
    bool miscountsWideCharacters = false;
    /// Whether each paragraph is an element, of which only those on the screen exist.
    bool splitsParagraphs = false;
    /// Whether places are relative to the window although those of the screen were asked for.
    bool placesInWindow = false;
    /// Whether places in a window with a menu are too high.
    bool placesOverMenu = false;
    /// Whether a plain text may tell the place of its first paragraph for each of them.
    bool misplacesParagraphs = false;
    /// Whether places on a page are in pixels, though those of the window are in points.
    bool placesPagesInPixels = false;
    /// Whether places are found out only once they have been asked for.
    bool tellsPlacesLate = false;

    bool operator==(const AtSpiToolkit&) const = default;
};

/// By the names that an application gives for its toolkit and for itself.
[[nodiscard]] AtSpiToolkit atSpiToolkit(QStringView name, QStringView application);

/// Whether any character is beyond the basic plane.
[[nodiscard]] bool hasWideCharacters(QStringView text);

/// A text as it came over the bus, without the toolkit's own marks.
[[nodiscard]] QString withoutMarks(QString text, const AtSpiToolkit& toolkit);

/// The toolkit's offset as one in UTF-16 units of the text, which must reach that far; the end of
/// the text for one beyond it.
[[nodiscard]] std::int64_t utf16Offset(std::int64_t offset, QStringView text,
                                       const AtSpiToolkit& toolkit);

/// And back. An offset within a character stands for its beginning.
[[nodiscard]] std::int64_t toolkitOffset(std::int64_t utf16, QStringView text,
                                         const AtSpiToolkit& toolkit);

} // namespace vorq
