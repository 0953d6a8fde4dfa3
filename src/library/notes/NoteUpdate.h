#pragma once

#include "library/notes/VorqNoteImport.h"
#include "library/records/SavedNote.h"

#include <optional>

namespace vorq {

/// The content of the note with the reply folded in. A reply that repeats the loaded body replaces
/// it, any other stands below it. Text of the note that neither of them holds is kept above the
/// reply. Nothing for a reply of white space alone.
[[nodiscard]] std::optional<VorqNoteImport::Payload>
withReply(const SavedNote& note, QStringView loadedBody, QStringView reply);

} // namespace vorq
