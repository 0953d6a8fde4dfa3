#pragma once

#include <QString>

#include <optional>

namespace vorq::gnote {

// Texts as Gnote keeps them: XML, which must be well-formed, since Gnote empties a note whose new
// content is not.

/// The text without what XML cannot hold: control characters go, other line breaks become line
/// feeds, lone surrogates become U+FFFD.
[[nodiscard]] QString storableText(QStringView text);

/// The same for a title, which is one line.
[[nodiscard]] QString storableTitle(QStringView title);

/// The content of a note with an empty line and the text after it, its format untouched. Nothing if
/// it is not well-formed, or the result would not be.
[[nodiscard]] std::optional<QString> withAppended(const QString& contentXml, QStringView text);

} // namespace vorq::gnote
