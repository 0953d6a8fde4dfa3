#include "conversation/PanelHistory.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

VorqMessage user(const QString& text) {
    VorqMessage message;
    message.text = text;
    return message;
}

VorqMessage assistant(const QString& text) {
    VorqMessage message = user(text);
    message.role = MessageRole::Assistant;
    return message;
}

std::optional<SavedChat> saved(const std::vector<VorqMessage>& messages) {
    return savedChat(messages, Date());
}

TEST(SavedPanelChat, IsNothingWithoutAMessageOfItsOwn) {
    EXPECT_EQ(saved({}), std::nullopt);
    EXPECT_EQ(
        saved({assistant(" Hello 👋, Vorq here"), user("Save this chat!"), user("save THIS")}),
        std::nullopt);
}

TEST(SavedPanelChat, LeavesOutWhatIsNotFinished) {
    VorqMessage typing = assistant("half");
    typing.isTyping = true;
    EXPECT_EQ(saved({VorqMessage::placeholder(), typing, assistant("Working..."), user(" \n")}),
              std::nullopt);
}

TEST(SavedPanelChat, KeepsTextsAsTheyAre) {
    const auto chat =
        savedChat(std::vector{user(" ask "), assistant("save")}, Date(Date::duration(5)));
    ASSERT_TRUE(chat);
    ASSERT_EQ(chat->messages.size(), 2);
    EXPECT_EQ(chat->messages[0].role, "user");
    EXPECT_EQ(chat->messages[0].text, " ask ");
    EXPECT_EQ(chat->messages[1].role, "assistant");
    EXPECT_EQ(chat->messages[1].text, "save");
    EXPECT_NE(chat->messages[0].id, chat->messages[1].id);
    EXPECT_EQ(chat->createdAt, Date(Date::duration(5)));
}

TEST(SavedPanelChat, IsNamedForTheFirstPromptElseTheFirstMessage) {
    EXPECT_EQ(saved({assistant("answer"), user("**Hello world**")})->title, "Hello world");
    EXPECT_EQ(saved({assistant("answer"), assistant("more")})->title, "answer");
}

TEST(SavedPanelChat, ShortensItsTitleTo56Characters) {
    EXPECT_EQ(saved({user(QString(57, u'é'))})->title, QString(56, u'é'));
}

} // namespace
} // namespace vorq
