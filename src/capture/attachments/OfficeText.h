#pragma once

#include "platform/documents/DocumentTools.h"

#include <QString>

#include <optional>

namespace vorq {

class AttachedFile;

/// The text of an office document of this extension, by the first way that gives one. Blocks.
/// Nothing if no way gives a text, or if it is stopped. White space alone is a text.
[[nodiscard]] std::optional<QString> officeText(DocumentTools& tools, AttachedFile& file,
                                                const QString& extension,
                                                const std::stop_token& stop);

} // namespace vorq
