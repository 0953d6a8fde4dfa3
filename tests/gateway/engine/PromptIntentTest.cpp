#include "engine/embedded/PromptIntent.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using Kind = PromptIntent::Kind;

TEST(PromptIntentTest, RecognisesSummaries) {
    for (const char* prompt :
         {"Summarise this", "TL;DR", "give me the key points please",
          "Fasse zusammen: Zusammenfassung", "résume ce texte", "explain this",
          "What is this about?", "Explain like I'm five", "Give me 3 bullet points",
          "Fasse den Text zusammen", "Erkläre das einfach", "continue", "Explain this code"}) {
        EXPECT_EQ(readPrompt(prompt).kind, Kind::Summary) << prompt;
    }
}

TEST(PromptIntentTest, RecognisesWriting) {
    for (const char* prompt :
         {"Rewrite this", "please translate it to French", "can you fix the grammar",
          "Write an email to my boss", "翻訳して", "Schreibe eine Antwort",
          "Writing tools — writer rewrite pass.\nWriter ask: shorter\nReturn ONE drop-in"}) {
        EXPECT_EQ(readPrompt(prompt).kind, Kind::Writing) << prompt;
    }
}

TEST(PromptIntentTest, EverythingElseIsAQuestion) {
    for (const char* prompt : {"What is the correct theory?", "Who wrote the letter?",
                               "How many enzymes are there?", "explain osmosis"}) {
        EXPECT_EQ(readPrompt(prompt).kind, Kind::Question) << prompt;
    }
}

TEST(PromptIntentTest, RecognisesSmallTalk) {
    for (const char* prompt : {"hello", "Thanks!", "Guten Tag", "谢谢"}) {
        EXPECT_EQ(readPrompt(prompt).kind, Kind::SmallTalk) << prompt;
    }
}

TEST(PromptIntentTest, TheSubjectLeavesInstructionsOut) {
    EXPECT_EQ(readPrompt("What does it say about priority queues?").subject, "priority queues");
    EXPECT_EQ(readPrompt("List the dates").subject, "");
    EXPECT_EQ(readPrompt("What are the deadlines?").subject, "");
    EXPECT_EQ(readPrompt("List the dates").kind, Kind::Question);
}

TEST(PromptIntentTest, TakesAPromptAndItsTextApart) {
    const std::string text(150, 'x');
    EXPECT_EQ(apart("Summarise this: " + text).prompt, "Summarise this");
    EXPECT_EQ(apart("Summarise this: " + text).text, text);
    EXPECT_EQ(apart(text + "\n\nWhat is it?").prompt, "What is it?");
    EXPECT_EQ(apart(text + "\n\nWhat is it?").text, text);
    EXPECT_EQ(apart("Why: it is short").text, "");
    EXPECT_EQ(apart(text).prompt, text);
}

TEST(PromptIntentTest, RecognisesKeyTerms) {
    EXPECT_EQ(readPrompt("List the key terms").kind, Kind::KeyTerms);
}

TEST(PromptIntentTest, ReadsHowManyAreWanted) {
    EXPECT_EQ(readPrompt("Summarise it in three sentences").count, 3U);
    EXPECT_EQ(readPrompt("5 bullet points please").count, 5U);
    EXPECT_EQ(readPrompt("give me 900 key points").count, 15U);
    EXPECT_EQ(readPrompt("summarise chapter 4").count, std::nullopt);
}

TEST(PromptIntentTest, LooksThroughTheInstructionsOfTheClient) {
    const PromptIntent study =
        readPrompt("The student is studying a saved note. Use the note / attachments as context.\n"
                   "Student request: who was Ingenhousz?");
    EXPECT_EQ(study.request, "who was Ingenhousz?");
    EXPECT_EQ(study.kind, Kind::Question);
    const PromptIntent deeper = readPrompt(
        "Go deeper on this excerpt from your previous reply — explain it more fully. Also "
        "address this request: what about salt?\nStructure the reply however best fits.");
    EXPECT_EQ(deeper.request, "what about salt?");
    EXPECT_TRUE(deeper.goesDeeper);
    EXPECT_EQ(readPrompt("Please review the attached materials as study context and help me "
                         "understand them.")
                  .kind,
              Kind::Summary);
    EXPECT_EQ(
        readPrompt("Deep research this attached study material.\nExtract the core ideas.").kind,
        Kind::Summary);
}

} // namespace
} // namespace vorq::gateway::testing
