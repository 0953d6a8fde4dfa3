#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <span>

namespace vorq {

/// Which prompts are commands that the program carries out by itself. Phrase tables decide, no
/// model does. Attachments play no part.

/// Who answers a prompt of the panel.
enum class PromptRoute : std::uint8_t {
    SaveChat,
    Library, ///< archived: answered with a pointer to the panel
    RecallNote,
    SaveResearch,
    Study,
    Backend, ///< no command
};

/// The route of a panel prompt: the first command in the order of the enumeration that it is.
[[nodiscard]] PromptRoute route(QStringView text);

/// The comparison form of a prompt: lower-case, trimmed, with single blanks, and without full
/// stops, exclamation and question marks at both ends.
[[nodiscard]] QString normalizedCommand(QStringView text);

/// Whether the comparison form is one of the phrases, or begins with one and a blank.
[[nodiscard]] bool matchesPhrase(QStringView normalized, std::span<const QStringView> phrases);

// On the raw prompt:
[[nodiscard]] bool isSaveChatRequest(QStringView text);
[[nodiscard]] bool isRecallNoteRequest(QStringView text);
[[nodiscard]] bool isSaveResearchRequest(QStringView text);

/// Asked by the hub; in the panel a quiz is the flashcards of the note under study.
[[nodiscard]] bool isHubAIQuizRequest(QStringView text);

/// What a quiz request is about: what follows a phrase such as "quiz me on", else all of it.
[[nodiscard]] QString quizFocus(QStringView text);

} // namespace vorq
