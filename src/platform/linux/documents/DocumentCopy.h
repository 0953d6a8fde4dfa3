#pragma once

#include "platform/documents/DocumentTools.h"

#include <QString>

#include <optional>
#include <stop_token>

namespace vorq {

/// Copies a document of at most `DocumentTools::officeLimit` bytes into a new file; why that
/// failed, or nothing. Blocks; on any thread.
[[nodiscard]] std::optional<DocumentFailure> copyDocument(const QString& from, const QString& to,
                                                          const std::stop_token& stop);

} // namespace vorq
