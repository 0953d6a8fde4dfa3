#include "conversation/PromptCommands.h"

#include <gtest/gtest.h>

#include <array>

namespace vorq {

static void PrintTo(PromptRoute route, std::ostream* out) {
    *out << "route " << static_cast<int>(route);
}

namespace {

TEST(NormalizedCommand, LowersTrimsAndCollapses) {
    EXPECT_EQ(normalizedCommand(u" \n Save\t THE \r\n Chat !? "), "save the chat ");
    EXPECT_EQ(normalizedCommand(u"...save chat?!."), "save chat");
    EXPECT_EQ(normalizedCommand(u"ÉTÉ"), "été");
}

TEST(MatchesPhrase, AsksForTheWholeOrABlankAfterIt) {
    constexpr auto phrases = std::to_array<QStringView>({u"save chat"});
    EXPECT_TRUE(matchesPhrase(u"save chat", phrases));
    EXPECT_TRUE(matchesPhrase(u"save chat now", phrases));
    EXPECT_FALSE(matchesPhrase(u"save chats", phrases));
    EXPECT_FALSE(matchesPhrase(u"please save chat", phrases));
    EXPECT_FALSE(matchesPhrase(u"", phrases));
}

TEST(Route, TakesSaveInAnySpellingForAChatSave) {
    EXPECT_EQ(route(u"Save."), PromptRoute::SaveChat);
    EXPECT_EQ(route(u"SAVE!"), PromptRoute::SaveChat);
    EXPECT_EQ(route(u"save to library"), PromptRoute::SaveChat);
}

TEST(Route, TakesSaveAloneNeverForResearch) {
    EXPECT_EQ(route(u"save"), PromptRoute::SaveChat);
    EXPECT_FALSE(isSaveResearchRequest(u"save"));
}

TEST(Route, SavesResearchByPhraseAndBlank) {
    EXPECT_EQ(route(u"save this to note please"), PromptRoute::SaveResearch);
}

TEST(Route, DecidesByPhraseBeforeTheExclusionOfHistory) {
    EXPECT_EQ(route(u"save the note to history"), PromptRoute::SaveResearch);
}

TEST(Route, SendsASaveOfAChatAboutNotesToTheBackend) {
    EXPECT_EQ(route(u"save my chat about notes"), PromptRoute::Backend);
}

TEST(Route, SavesResearchByWordsInAnyOrder) {
    EXPECT_EQ(route(u"update and save"), PromptRoute::SaveResearch);
}

TEST(Route, SendsASaveOfNothingKnownToTheBackend) {
    EXPECT_EQ(route(u"what should I save"), PromptRoute::Backend);
}

TEST(Route, AnswersForTheLibraryWhateverFollows) {
    EXPECT_EQ(route(u"open the library"), PromptRoute::Library);
    EXPECT_EQ(route(u"open library card catalogue"), PromptRoute::Library);
}

TEST(Route, StudiesWhateverFollowsQuiz) {
    EXPECT_EQ(route(u"quiz"), PromptRoute::Study);
    EXPECT_EQ(route(u"quiz me on rivers"), PromptRoute::Study);
    EXPECT_EQ(route(u"quizzes"), PromptRoute::Backend);
}

TEST(Route, RecallsByVerbAndObject) {
    EXPECT_EQ(route(u"show my note about rivers"), PromptRoute::RecallNote);
    EXPECT_EQ(route(u"reload the note"), PromptRoute::RecallNote);
}

TEST(Route, FindsVerbsAndObjectsInsideWords) {
    EXPECT_EQ(route(u"target the note"), PromptRoute::RecallNote);
    EXPECT_EQ(route(u"getaway to the notebook"), PromptRoute::RecallNote);
}

TEST(Route, AsksForAVerbBesideNotes) {
    EXPECT_EQ(route(u"notes"), PromptRoute::Backend);
}

TEST(Route, AsksForAnObjectBesideGet) {
    EXPECT_EQ(route(u"get notes"), PromptRoute::Backend);
}

TEST(Route, RecallsBeforeItSavesResearch) {
    EXPECT_TRUE(isSaveResearchRequest(u"open my note and save it"));
    EXPECT_EQ(route(u"open my note and save it"), PromptRoute::RecallNote);
}

TEST(Route, SendsPunctuationToTheBackend) {
    EXPECT_EQ(normalizedCommand(u"?! ."), " ");
    EXPECT_EQ(normalizedCommand(u"?!."), "");
    EXPECT_EQ(route(u"?!."), PromptRoute::Backend);
    EXPECT_EQ(route(u""), PromptRoute::Backend);
}

TEST(IsHubAIQuizRequest, KnowsPhrasesAndMentions) {
    EXPECT_TRUE(isHubAIQuizRequest(u"Quiz myself!"));
    EXPECT_TRUE(isHubAIQuizRequest(u"quiz on cells"));
    EXPECT_TRUE(isHubAIQuizRequest(u"please quiz me about it"));
    EXPECT_TRUE(isHubAIQuizRequest(u"I want an interactive quiz"));
}

TEST(IsHubAIQuizRequest, LeavesOtherPrompts) {
    EXPECT_FALSE(isHubAIQuizRequest(u"?"));
    EXPECT_FALSE(isHubAIQuizRequest(u"flashcards"));
    EXPECT_FALSE(isHubAIQuizRequest(u"please quiz me"));
}

TEST(QuizFocus, DropsTheRequest) {
    EXPECT_EQ(quizFocus(u" Quiz ME on  The Rhine? "), "The Rhine?");
    EXPECT_EQ(quizFocus(u"test me about it"), "it");
}

TEST(QuizFocus, IsTheWholeRequestWithoutAKnownBeginning) {
    EXPECT_EQ(quizFocus(u" Quiz me, on rivers "), "Quiz me, on rivers");
    EXPECT_EQ(quizFocus(u"quiz me on "), "quiz me on");
}

} // namespace
} // namespace vorq
