#include "engine/embedded/ReplyDraft.h"
#include "doubles/gateway/Samples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

namespace vorq::gateway::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

PromptRequest asking(const std::string& prompt, const std::string& text = "") {
    PromptRequest request;
    request.prompt = prompt;
    request.selectedText = text;
    return request;
}

/// Sentences that the client takes for a diagnosis and hides.
void expectShown(const std::string& text) {
    std::string lower = text;
    std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return std::tolower(c); });
    for (const char* phrase :
         {"backend fallback", "add ai provider api keys", "add openrouter_api_key",
          "vorq is signed in", "no highlighted text was available",
          "once the backend key is configured", "offline fallback", "enable real ai"}) {
        EXPECT_THAT(lower, Not(HasSubstr(phrase)));
    }
}

TEST(ReplyDraftTest, AnAnalysisHasATitleKeySentencesTermsAndAFollowUp) {
    const ReplyDraft draft = draftAnalysis(kPlantText);
    const std::string text = draft.text();
    EXPECT_THAT(text, StartsWith("## Photosynthesis\n\n- "));
    EXPECT_THAT(text, HasSubstr("- Photosynthesis is a process"));
    EXPECT_THAT(text, HasSubstr("\n\n**Key terms:** "));
    EXPECT_THAT(text, HasSubstr("no language model is connected"));
    EXPECT_THAT(text, Not(HasSubstr("No sentence. At all.")));
    ASSERT_TRUE(draft.followUp.has_value());
    EXPECT_EQ(draft.followUp->labels.size(), 3U);
    expectShown(text);
}

TEST(ReplyDraftTest, AShortFirstLineIsTheTitle) {
    EXPECT_THAT(draftAnalysis("The Danube\n\nThe Danube is a river. It is long.").text(),
                StartsWith("## The Danube\n\n- "));
}

TEST(ReplyDraftTest, ATextWithoutHeadingsIsTitledByItsTerms) {
    EXPECT_THAT(
        draftAnalysis("Volcanoes erupt lava. The lava of volcanoes cools. Lava is hot.").text(),
        StartsWith("## Volcanoes and lava\n"));
}

TEST(ReplyDraftTest, AQuestionIsAnsweredWithQuotesBestFirst) {
    const std::string text =
        draftReply(asking("Who showed that light is essential?", kPlantText)).text();
    EXPECT_THAT(text, StartsWith("The text says:\n\n> Dr. Jan Ingenhousz"));
    expectShown(text);
}

TEST(ReplyDraftTest, AQuestionTheTextDoesNotAnswerIsAdmitted) {
    const std::string text = draftReply(asking("medieval castles?", kPlantText)).text();
    EXPECT_THAT(text, StartsWith("I found no sentence about that"));
    EXPECT_THAT(text, HasSubstr("\n- "));
    expectShown(text);
}

TEST(ReplyDraftTest, ATextInThePromptIsWorkedOn) {
    EXPECT_THAT(draftReply(asking(std::string("Summarise this:\n\n") + kPlantText)).text(),
                StartsWith("**Key sentences**\n\n- Photosynthesis is a process"));
}

TEST(ReplyDraftTest, TheInstructionsOfTheClientAreNoText) {
    const std::string deep =
        "Deep research this attached study material.\nExtract the core ideas, surface related "
        "well-known studies or frameworks, and bridge connections between concepts so I can learn "
        "the bigger picture.";
    EXPECT_THAT(draftReply(asking(deep)).text(), StartsWith("No language model is connected"));
    PromptRequest tool = asking(std::string("Make a list:\n") + kPlantText);
    tool.whole = true;
    EXPECT_THAT(draftReply(tool).text(), Not(StartsWith("**Key")));
}

TEST(ReplyDraftTest, DatesAreListedInTheirOrder) {
    const std::string text =
        draftReply(asking("List the dates", "It began in 1789. Nobody knew. In June the king fled "
                                            "with 12 men. Then 3 left. It ended on 4.8.1790."))
            .text();
    EXPECT_THAT(text,
                StartsWith("The text gives these dates:\n\n> It began in 1789.\n\n> In June"));
    EXPECT_THAT(text, HasSubstr("4.8.1790"));
    EXPECT_THAT(text, Not(HasSubstr("Then 3")));
}

TEST(ReplyDraftTest, AReasonIsPreferredWhereOneIsAskedFor) {
    EXPECT_THAT(draftReply(asking("Why did the fire spread so fast?",
                                  "On Tuesday the fire spread over the city. It spread because "
                                  "the houses were built of wood and a strong wind blew."))
                    .text(),
                StartsWith("The text says:\n\n> It spread because"));
}

TEST(ReplyDraftTest, AWordThatIsGrammarElsewhereIsFound) {
    EXPECT_THAT(
        draftReply(asking("What caused the war?", "The harvest was poor. The war was caused "
                                                  "by a quarrel over salt. It was cold."))
            .text(),
        StartsWith("The text says:\n\n> The war was caused by"));
}

TEST(ReplyDraftTest, AQuestionInTheTextIsAnsweredByWhatFollowsIt) {
    const std::string text =
        draftReply(asking("Can I bring my dog?",
                          "# Camp site\n\nCan I bring my dog?\nOnly on a lead.\n\nCan I bring a "
                          "boat?\nThere is a ramp by the mill."))
            .text();
    EXPECT_THAT(text, StartsWith("The text says:\n\n> Only on a lead."));
    EXPECT_THAT(text, Not(HasSubstr("> Can I bring my dog?")));
}

TEST(ReplyDraftTest, AProhibitionIsFoundByWhoItIsFor) {
    EXPECT_THAT(
        draftReply(asking("Who must not take it?",
                          "Adults take two tablets. You take them with water. People with a "
                          "weak heart must not take this medicine."))
            .text(),
        StartsWith("The text says:\n\n> People with a weak heart"));
}

TEST(ReplyDraftTest, ATimeOfDayAnswersWhen) {
    EXPECT_THAT(draftReply(asking("When does the library open?",
                                  "The library is old. The library opens at 9.30 a.m. on weekdays. "
                                  "The library lends out maps."))
                    .text(),
                StartsWith("The text says:\n\n> The library opens at 9.30 a.m."));
}

TEST(ReplyDraftTest, InflectedFormsMeet) {
    EXPECT_THAT(
        draftReply(asking("Was geschieht mit den Fahrgästen?",
                          "Die Strecke ist gesperrt. Die Fahrgäste steigen in Busse um. Das "
                          "Wetter bleibt schlecht."))
            .text(),
        StartsWith("Im Text steht:\n\n> Die Fahrgäste"));
}

TEST(ReplyDraftTest, AChineseNameIsFoundWhole) {
    EXPECT_THAT(
        draftReply(asking("周德明今年多大？", "桥修好了。木匠周德明今年七十四岁。河水很低。"))
            .text(),
        StartsWith("文中写道：\n\n> 木匠周德明今年七十四岁。"));
}

TEST(ReplyDraftTest, AQuestionOfTheUserIsNotTakenForTheText) {
    const std::string question =
        "Please tell me: what were the reasons for which the old harbour of Penwick was given up "
        "in "
        "the year 1820, and who decided that it should be moved to the other side of the bay?";
    EXPECT_THAT(draftReply(asking(question)).text(), StartsWith("No language model is connected"));
}

TEST(ReplyDraftTest, GrammarWordsOfAQuestionMatchNothing) {
    EXPECT_THAT(
        draftReply(asking("What does it say about queues?", "By Jane Doe. A queue waits.")).text(),
        Not(HasSubstr("Doe")));
}

TEST(ReplyDraftTest, SmallTalkIsNoQuestion) {
    const std::string text = draftReply(asking("thanks", kPlantText)).text();
    EXPECT_THAT(text, StartsWith("I am here"));
    expectShown(text);
}

TEST(ReplyDraftTest, ASummaryHasAsManySentencesAsAskedFor) {
    const std::string text = draftReply(asking("Summarise this in 2 sentences", kPlantText)).text();
    EXPECT_EQ(std::count(text.begin(), text.end(), '-'), 2) << text;
}

TEST(ReplyDraftTest, APromptWithoutTextIsAnsweredHonestly) {
    const std::string text = draftReply(asking("What is the capital of France?")).text();
    EXPECT_THAT(text, StartsWith("No language model is connected"));
    EXPECT_THAT(text, HasSubstr("flashcards"));
    expectShown(text);
}

TEST(ReplyDraftTest, APictureWithoutTextIsAnsweredHonestly) {
    PromptRequest request = asking("What is on this?");
    request.image = "data:image/png;base64,AA";
    const std::string text = draftReply(request).text();
    EXPECT_THAT(text, HasSubstr("picture"));
    expectShown(text);
}

TEST(ReplyDraftTest, WithoutTextTheConversationIsSearched) {
    PromptRequest request = asking("What did you say about stomata?");
    request.history = {{false, "Hello 👋 How can I help?"},
                       {true, "stomata?"},
                       {false, "Plants open their stomata at night. Leaves are green."},
                       {true, "What did you say about stomata?"}};
    const std::string text = draftReply(request).text();
    EXPECT_THAT(text, StartsWith("From our conversation:\n\n> Plants open their stomata"));
}

TEST(ReplyDraftTest, ItsOwnRemarksAreNoConversation) {
    PromptRequest request = asking("which language model is connected?");
    const std::string remark = draftReply(request).text();
    request.history = {{false, remark}, {true, request.prompt}};
    EXPECT_EQ(draftReply(request).text(), remark);
}

TEST(ReplyDraftTest, GoingDeeperLooksBeyondTheExcerpt) {
    PromptRequest request =
        asking("Go deeper on this excerpt from your previous reply — explain it more fully.",
               "Rubisco fixes carbon.");
    request.history = {
        {false, "Rubisco fixes carbon. The enzyme rubisco is slow. Trees are tall."}};
    const std::string text = draftReply(request).text();
    EXPECT_THAT(text, HasSubstr("> The enzyme rubisco is slow."));
    EXPECT_THAT(text, Not(HasSubstr("Trees")));
    EXPECT_THAT(text, Not(HasSubstr("> Rubisco fixes")));
    request.history.clear();
    EXPECT_THAT(draftReply(request).text(), HasSubstr("- Rubisco fixes carbon."));
}

TEST(ReplyDraftTest, WritingIsDeclinedAndNeverOfferedAsAReplacement) {
    EXPECT_THAT(draftReply(asking("Rewrite this", kPlantText)).text(),
                StartsWith("Writing or rewriting needs a language model"));
    PromptRequest whole = asking("Rewrite this", kPlantText);
    whole.whole = true;
    EXPECT_THROW(static_cast<void>(draftReply(whole)), EngineError);
}

TEST(ReplyDraftTest, TextWithoutSentencesIsAdmitted) {
    for (const char* text : {"```\ncode only\n```", "!!! ??? ...", "| a | b |"}) {
        EXPECT_THAT(draftAnalysis(text).text(), StartsWith("I found no sentences")) << text;
        EXPECT_THAT(draftReply(asking("what?", text)).text(), StartsWith("I found no sentences"));
    }
}

TEST(ReplyDraftTest, TheSameRequestGetsTheSameReply) {
    EXPECT_EQ(draftAnalysis(kPlantText).pieces, draftAnalysis(kPlantText).pieces);
    const PromptRequest request = asking("light and oxygen", kPlantText);
    EXPECT_EQ(draftReply(request).pieces, draftReply(request).pieces);
}

} // namespace
} // namespace vorq::gateway::testing
