#pragma once

#include "capture/attachments/AttachmentReader.h"

#include <QList>
#include <QStringList>

namespace vorq {

/// Why a question could not be made.
struct AskRefusal {
    int exitStatus = 1;
    QString sentence; ///< for standard error; empty after a signal
};

/// Reads the files one after the other. Runs the event loop until they are there, a file cannot be
/// read, or an interrupt or termination signal stops it, of which the exit status tells.
[[nodiscard]] std::expected<QList<PromptAttachment>, AskRefusal>
readAskedFiles(const QStringList& files, AttachmentReader& reader);

} // namespace vorq
