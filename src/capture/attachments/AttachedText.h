#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace vorq {

/// The text of a file: UTF-8 or, if it is not that from end to end, UTF-16. Nothing if it is
/// neither. Bytes that were cut may end in the middle of a character.
[[nodiscard]] std::optional<QString> decodeAttachedText(QByteArray bytes, bool isCut);

/// The text in the XML of slides, its pieces separated by single blanks; nothing if there is none
/// or it is not UTF-8.
[[nodiscard]] std::optional<QString> slideText(QByteArray xml, bool isCut);

} // namespace vorq
