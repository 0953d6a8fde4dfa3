#pragma once

#include "library/richtext/NoteRichText.h"

#include <QString>

#include <optional>

namespace vorq {

// What names mean in RTF, for its reader and its writer. For source files only.

namespace rtf {

/// A font as it is named in a font table: names may tell weight and slant too.
struct NamedFont {
    QString family;
    NoteFontWeight weight = NoteFontWeight::Regular;
    bool isItalic = false;
};

/// The name of the paragraph style in the style sheet.
[[nodiscard]] QStringView styleName(NoteTextStyle style);

/// The style that a paragraph style of this name stands for, whoever wrote it, or nothing.
[[nodiscard]] std::optional<NoteTextStyle> styleNamed(QStringView name);

/// The font table's name of a family. Semibold is a font of its own there, since RTF has only bold.
[[nodiscard]] QString fontName(QStringView family, bool isSemibold);

[[nodiscard]] NamedFont fontNamed(QStringView name);

inline constexpr QStringView labelColorName = u"labelColor";
inline constexpr QStringView secondaryLabelColorName = u"secondaryLabelColor";

} // namespace rtf
} // namespace vorq
