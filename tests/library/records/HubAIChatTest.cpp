#include "library/records/HubAIChat.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr const char* identity = "2f564652-466d-e486-522c-4f8d6102dd70";

constexpr const char* oldChat =
    R"({"id":"2f564652-466d-e486-522c-4f8d6102dd70","title":"Plan",)"
    R"("createdAt":"2026-03-01T00:00:00Z","updatedAt":"2026-03-02T00:00:00Z")";

constexpr const char* oldMessage =
    R"({"id":"2f564652-466d-e486-522c-4f8d6102dd70","role":"user","text":"ask",)"
    R"("createdAt":"2026-03-01T00:00:00Z")";

std::optional<std::vector<HubAIChat>> chatWith(const QByteArray& members) {
    return decodeHubAIChats('[' + QByteArray(oldChat) + members + "}]");
}

std::optional<std::vector<HubAIChat>> messageWith(const QByteArray& members) {
    return chatWith(R"(,"messages":[)" + QByteArray(oldMessage) + members + "}]");
}

TEST(HubAIChat, OldRecordReadsAsSavedAndEmpty) {
    const auto chats = chatWith("");
    ASSERT_TRUE(chats);
    EXPECT_TRUE(chats->front().isSaved);
    EXPECT_EQ(encode(*chats), R"([
  {
    "createdAt" : "2026-03-01T00:00:00Z",
    "id" : "2F564652-466D-E486-522C-4F8D6102DD70",
    "isSaved" : true,
    "messages" : [

    ],
    "sourceNoteIDs" : [

    ],
    "title" : "Plan",
    "updatedAt" : "2026-03-02T00:00:00Z"
  }
])");
}

TEST(HubAIChat, EveryKeptFieldSurvivesTheFile) {
    HubAIMessage message;
    message.id = QUuid(identity);
    message.role = "assistant";
    message.text = "primer";
    message.noteClips = {"Note 1"};
    message.fileClips = {"a.pdf"};
    message.createdAt = Date(1s);
    message.followUp = VorqFollowUp{"More?", {"Yes", "No"}};
    const HubAIChat chat{QUuid(identity), "Plan",   {message}, {QUuid::createUuid()},
                         false,           Date(2s), Date(3s)};
    EXPECT_EQ(decodeHubAIChats(encode(std::vector{chat})), std::vector{chat});
}

TEST(HubAIChat, TypingIsNotKept) {
    const auto chats = messageWith(R"(,"isTyping":true,"typingFullText":"ask more")");
    ASSERT_TRUE(chats);
    const HubAIMessage& message = chats->front().messages.front();
    EXPECT_FALSE(message.isTyping);
    EXPECT_EQ(message.typingFullText, std::nullopt);
    EXPECT_FALSE(encode(*chats).contains("yping"));
}

TEST(HubAIChat, MessageIsWrittenWithItsKeysInOrder) {
    const auto chats = messageWith(
        R"(,"followUp":{"question":"q","labels":["l"]},"quiz":{"primer":"p","questions":[)"
        R"({"prompt":"x","options":["a"],"answerIndex":0}]})");
    ASSERT_TRUE(chats);
    EXPECT_TRUE(encode(*chats).contains(R"(
      {
        "createdAt" : "2026-03-01T00:00:00Z",
        "fileClips" : [

        ],
        "followUp" : {
          "labels" : [
            "l"
          ],
          "question" : "q"
        },
        "id" : "2F564652-466D-E486-522C-4F8D6102DD70",
        "noteClips" : [

        ],
        "quiz" : {
          "primer" : "p",
          "questions" : [
            {
              "answerIndex" : 0,
              "explanation" : "",
              "options" : [
                "a"
              ],
              "prompt" : "x"
            }
          ],
          "sourceNoteIDs" : [

          ]
        },
        "role" : "user",
        "text" : "ask"
      }
)")) << encode(*chats).toStdString();
}

TEST(HubAIChat, QuestionsGetNewIdentities) {
    const QByteArray question = R"({"prompt":"x","options":[],"answerIndex":0})";
    const auto chats =
        messageWith(R"(,"quiz":{"primer":"","questions":[)" + question + ',' + question + "]}");
    ASSERT_TRUE(chats);
    const HubQuizData& quiz = *chats->front().messages.front().quiz;
    EXPECT_NE(quiz.questions[0].id, quiz.questions[1].id);
}

TEST(HubAIChat, OneThatDoesNotFitEmptiesTheList) {
    for (const char* members :
         {R"(,"isSaved":1)", R"(,"sourceNoteIDs":["x"])", R"(,"messages":[{}])"})
        EXPECT_EQ(chatWith(members), std::nullopt) << members;
    for (const char* members :
         {R"(,"noteClips":[1])", R"(,"quiz":{"primer":""})", R"(,"followUp":{"question":""})",
          R"(,"quiz":{"primer":"","questions":[{"prompt":"","options":[],"answerIndex":0.5}]})"})
        EXPECT_EQ(messageWith(members), std::nullopt) << members;
    EXPECT_NE(messageWith(R"(,"quiz":null,"followUp":null)"), std::nullopt);
}

} // namespace
} // namespace vorq
