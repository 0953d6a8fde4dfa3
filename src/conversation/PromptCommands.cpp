#include "conversation/PromptCommands.h"

#include "support/text/Text.h"

#include <algorithm>
#include <array>

namespace vorq {
namespace {

using Phrases = std::span<const QStringView>;

constexpr auto saveChatPhrases = std::to_array<QStringView>({
    u"save chat",
    u"save this chat",
    u"save the chat",
    u"save conversation",
    u"save this conversation",
    u"save the conversation",
    u"save to chats",
    u"save this to chats",
    u"save chat to chats",
    u"save to history",
    u"save this to history",
    u"save chat to history",
    u"save to library",
    u"save this to library",
});

constexpr auto libraryPhrases = std::to_array<QStringView>({
    u"open library",
    u"show library",
    u"open the library",
    u"show the library",
});

constexpr auto recallPhrases = std::to_array<QStringView>({
    u"open notes",
    u"open my notes",
    u"show notes",
    u"show my notes",
    u"latest note",
    u"my latest note",
    u"the latest note",
    u"load note",
    u"load my note",
    u"load latest note",
    u"recall note",
    u"recall my note",
    u"study my note",
    u"study note",
    u"pull up the latest note",
    u"pull up latest note",
    u"pull up my note",
    u"pull up my notes",
    u"pull up my latest note",
    u"get the latest note",
    u"get my latest note",
    u"bring up the latest note",
    u"bring up my note",
    u"fetch the latest note",
    u"fetch my note",
});

constexpr auto recallVerbs = std::to_array<QStringView>({
    u"pull up",
    u"bring up",
    u"load",
    u"recall",
    u"fetch",
    u"get ",
    u"show",
    u"open",
});

constexpr auto recallObjects = std::to_array<QStringView>({
    u"latest note",
    u"my note",
    u"my notes",
    u"the note",
});

constexpr auto saveResearchPhrases = std::to_array<QStringView>({
    u"save notes",
    u"save note",
    u"save research",
    u"save the research",
    u"save to note",
    u"save this to note",
    u"save to my note",
    u"save into notes",
    u"save to notes",
    u"save the note",
    u"save my note",
    u"save the updated note",
    u"save the newly updated note",
    u"save newly updated note",
    u"save this note",
    u"keep this",
    u"keep the research",
});

constexpr auto researchWords = std::to_array<QStringView>({u"note", u"research", u"update"});

constexpr auto otherPlaces =
    std::to_array<QStringView>({u"chat", u"conversation", u"library", u"history"});

constexpr auto studyPhrases = std::to_array<QStringView>({
    u"make flashcards",
    u"make flash cards",
    u"create flashcards",
    u"create flash cards",
    u"flashcards",
    u"flash cards",
    u"quiz me",
    u"quiz",
    u"test me",
});

constexpr auto quizPhrases = std::to_array<QStringView>({
    u"quiz me",
    u"quiz myself",
    u"test me",
    u"give me a quiz",
    u"make a quiz",
    u"make more quiz",
    u"more quiz",
    u"quiz",
});

constexpr auto quizMentions = std::to_array<QStringView>({u" quiz me ", u"interactive quiz"});

constexpr auto quizFocusPrefixes = std::to_array<QStringView>({
    u"quiz me on ",
    u"test me on ",
    u"quiz on ",
    u"quiz me about ",
    u"test me about ",
});

constexpr bool isEndMark(char32_t codePoint) {
    return codePoint == U'.' || codePoint == U'!' || codePoint == U'?';
}

bool containsAny(QStringView text, Phrases parts) {
    return std::ranges::any_of(parts, [text](QStringView part) { return text.contains(part); });
}

bool isSaveChat(QStringView command) {
    return command == u"save" || matchesPhrase(command, saveChatPhrases);
}

bool isRecallNote(QStringView command) {
    if (matchesPhrase(command, recallPhrases)) return true;
    const bool hasVerb = containsAny(command, recallVerbs) || command.startsWith(u"get");
    return hasVerb && (containsAny(command, recallObjects) || command == u"notes");
}

bool isSaveResearch(QStringView command) {
    if (isSaveChat(command)) return false;
    if (matchesPhrase(command, saveResearchPhrases)) return true;
    return command.contains(u"save") && containsAny(command, researchWords) &&
           !containsAny(command, otherPlaces);
}

} // namespace

PromptRoute route(QStringView text) {
    const QString command = normalizedCommand(text);
    if (isSaveChat(command)) return PromptRoute::SaveChat;
    if (matchesPhrase(command, libraryPhrases)) return PromptRoute::Library;
    if (isRecallNote(command)) return PromptRoute::RecallNote;
    if (isSaveResearch(command)) return PromptRoute::SaveResearch;
    if (matchesPhrase(command, studyPhrases)) return PromptRoute::Study;
    return PromptRoute::Backend;
}

QString normalizedCommand(QStringView text) {
    const QString lowered = text.toString().toLower();
    return trimmedOf<isEndMark>(withSingleBlanks(trimmed(lowered))).toString();
}

bool matchesPhrase(QStringView normalized, Phrases phrases) {
    return std::ranges::any_of(phrases, [normalized](QStringView phrase) {
        return normalized.startsWith(phrase) &&
               (normalized.size() == phrase.size() || normalized[phrase.size()] == u' ');
    });
}

bool isSaveChatRequest(QStringView text) {
    return isSaveChat(normalizedCommand(text));
}

bool isRecallNoteRequest(QStringView text) {
    return isRecallNote(normalizedCommand(text));
}

bool isSaveResearchRequest(QStringView text) {
    return isSaveResearch(normalizedCommand(text));
}

bool isHubAIQuizRequest(QStringView text) {
    const QString command = normalizedCommand(text);
    return matchesPhrase(command, quizPhrases) || containsAny(command, quizMentions);
}

QString quizFocus(QStringView text) {
    const QStringView request = trimmed(text);
    const QString lowered = request.toString().toLower();
    for (const QStringView prefix : quizFocusPrefixes) {
        // Only single code units are lower-cased to those of the prefixes, so the length is the
        // same in the text itself.
        if (lowered.startsWith(prefix)) return trimmed(request.sliced(prefix.size())).toString();
    }
    return request.toString();
}

} // namespace vorq
