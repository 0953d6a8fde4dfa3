#pragma once

#include "platform/documents/DocumentTools.h"

#include <QString>

namespace vorq {

class AttachedFile;

/// The text of an office document of this extension, by the first way that gives one; never empty.
/// `TooLarge` for more than `DocumentTools::officeLimit` bytes. Blocks.
[[nodiscard]] std::expected<QString, DocumentFailure> officeText(DocumentTools& tools,
                                                                 const AttachedFile& file,
                                                                 const QString& extension,
                                                                 const std::stop_token& stop);

} // namespace vorq
