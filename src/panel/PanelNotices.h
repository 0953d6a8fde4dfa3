#pragma once

#include <QStringView>

namespace vorq {

/// What the panel says by itself, to commands of the user. None of it is a reply of the backend,
/// so none is ever kept as one.
namespace panel_notices {

inline constexpr QStringView savedToHistory = u"Saved to History.";
inline constexpr QStringView nothingToSave = u"Nothing to save yet.";
inline constexpr QStringView noChatToSave = u"Nothing to save yet — start a chat first.";
inline constexpr QStringView noReplyToSave = u"Nothing to save yet — ask me something first.";
inline constexpr QStringView noResearchToSave =
    u"Nothing to save yet — ask me to research or explain the note first.";
inline constexpr QStringView savedToNotes = u"Saved to Notes.";
inline constexpr QStringView notSavedToNotes = u"Couldn’t save to Notes.";
inline constexpr QStringView noteUpdated = u"Saved — original note plus the update.";
inline constexpr QStringView libraryArchived = u"Hub is archived. Use ⌘⇧A for Vorq.";
inline constexpr QStringView noNotes =
    u"No notes yet. Highlight text in a browser and press ⌘⇧S to save one.";
inline constexpr QStringView noNoteLoaded =
    u"No note loaded. Say “open notes” first, or save a highlight with ⌘⇧S.";
inline constexpr QStringView noteIsEmpty = u"That note is empty — nothing to make flashcards from.";
inline constexpr QStringView noFlashcards =
    u"I couldn’t build flashcards from that note. Try enriching it first.";
inline constexpr QStringView flashcardsSaved = u"The flashcards are saved on your note.";

/// What comes before and after the number of cards, at the beginning of their announcement.
inline constexpr QStringView flashcardsBefore = u"Here are ";
inline constexpr QStringView flashcardsAfter = u" flashcards — saved on your note.";

} // namespace panel_notices

/// Whether a message of the panel reads as one of these, or as the greeting. Other notices, such as
/// what a notes application gives as its reason, are not known by their words.
[[nodiscard]] bool readsAsNotice(QStringView text);

} // namespace vorq
