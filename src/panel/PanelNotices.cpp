#include "panel/PanelNotices.h"

#include "support/text/Text.h"

#include <algorithm>
#include <array>

namespace vorq {
namespace panel_notices {

static constexpr auto fixed = std::to_array<QStringView>(
    {savedToHistory, nothingToSave, noChatToSave, noReplyToSave, noResearchToSave, savedToNotes,
     notSavedToNotes, noteUpdated, libraryArchived, noNotes, noNoteLoaded, noteIsEmpty,
     noFlashcards, flashcardsSaved});

static bool announceFlashcards(QStringView text) {
    const QStringView line = firstLine(text);
    if (line.size() < flashcardsBefore.size() + flashcardsAfter.size()) return false;
    if (!line.startsWith(flashcardsBefore) || !line.endsWith(flashcardsAfter)) return false;
    bool isNumber = false;
    (void)line.chopped(flashcardsAfter.size()).sliced(flashcardsBefore.size()).toUInt(&isNumber);
    return isNumber;
}

} // namespace panel_notices

bool readsAsNotice(QStringView text) {
    const QStringView said = trimmed(text);
    return std::ranges::find(panel_notices::fixed, said) != panel_notices::fixed.end() ||
           said.startsWith(u"Hello 👋") || panel_notices::announceFlashcards(said);
}

} // namespace vorq
