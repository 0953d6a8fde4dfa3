#pragma once

#include "platform/documents/DocumentTools.h"

#include <QByteArray>
#include <QString>

#include <expected>
#include <functional>

namespace vorq {

/// The data URL of a picture: as JPEG or, if that is too large or the picture cannot be decoded, as
/// it is. The error is a sentence for the user; a picture that is too large both ways is refused.
/// Blocks.
/// @param size of the picture in bytes.
/// @param original gives these bytes; called only if they are needed.
[[nodiscard]] std::expected<QString, QString>
pictureDataURL(DocumentTools& tools, const DocumentSource& source, qint64 size,
               const std::function<std::expected<QByteArray, QString>()>& original,
               const std::stop_token& stop);

} // namespace vorq
