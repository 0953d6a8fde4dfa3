#pragma once

#include "library/records/SavedNote.h"

namespace vorq {

/// The note with its flashcards as Markdown. Headings, lists and bold come from its rich form, if
/// that still says the same as the body; else from what the plain body shows. Ends with a line
/// feed, unless the note is empty.
[[nodiscard]] QString noteMarkdown(const SavedNote& note);

/// The note with its flashcards as plain text, ending likewise.
[[nodiscard]] QString notePlainText(const SavedNote& note);

} // namespace vorq
