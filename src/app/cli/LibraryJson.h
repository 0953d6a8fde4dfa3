#pragma once

#include "app/cli/LibraryReader.h"

#include <QByteArray>
#include <QUuid>

namespace vorq {

/// An id as it stands in files: in capitals, without braces.
[[nodiscard]] QString idText(const QUuid& id);

// What the commands for notes and chats print for programs to read: one JSON document and a line
// feed. Lists have only what lists show.

[[nodiscard]] QByteArray jsonOf(const std::vector<SavedNote>& notes);
[[nodiscard]] QByteArray jsonOf(const SavedNote& note);
[[nodiscard]] QByteArray jsonOf(const std::vector<KeptChat>& chats);
[[nodiscard]] QByteArray jsonOf(const KeptChat& chat);

} // namespace vorq
