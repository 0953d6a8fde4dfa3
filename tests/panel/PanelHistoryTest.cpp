#include "panel/PanelHistory.h"

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

TEST(PanelHistory, ComesBackTrimmedAndWithoutBlankMessages) {
    SavedChat chat;
    for (const auto& [role, text] :
         {std::pair("user", " ask "), {"assistant", "reply"}, {"Assistant", "odd"}, {"user", " "}})
        chat.messages.push_back({QUuid::createUuid(), role, text});
    const std::vector<VorqMessage> messages = panelMessages(chat);
    ASSERT_EQ(messages.size(), 3U);
    EXPECT_EQ(messages[0].text, "ask");
    EXPECT_EQ(messages[0].role, MessageRole::User);
    EXPECT_EQ(messages[1].role, MessageRole::Assistant);
    EXPECT_EQ(messages[2].role, MessageRole::User) << "only the exact word is the assistant";
    EXPECT_NE(messages[0].id, chat.messages[0].id);
    EXPECT_FALSE(messages[0].isWorking || messages[0].isTyping || messages[0].followUp);
}

TEST(PanelHistory, KnowsWhatTheProgramSaidInChatsThatDoNotMarkIt) {
    for (const QString said :
         {"Saved to Notes.", " Saved to History.\n", "Saved — original note plus the update.",
          "Here are 12 flashcards — saved on your note.\n\n**1.** Q\n→ A",
          "Hello 👋, Vorq here…"}) {
        SavedChat chat;
        chat.messages = {{QUuid::createUuid(), "assistant", "They flow."},
                         {QUuid::createUuid(), "assistant", said}};
        EXPECT_EQ(latestAssistantText(panelMessages(chat)), "They flow.") << qPrintable(said);
    }
    for (const QString reply :
         {"Saved to Notes. And now?", "Here are flashcards — saved on your note.",
          "Here are some flashcards — saved on your note.", "Saved"}) {
        SavedChat chat;
        chat.messages = {{QUuid::createUuid(), "assistant", reply}};
        EXPECT_EQ(latestAssistantText(panelMessages(chat)), reply);
    }
}

TEST(PanelHistory, ANoticeIsMarkedInTheKeptChat) {
    VorqMessage notice = assistant("The notes are locked.");
    notice.isNotice = true;
    const auto chat = saved({assistant("They flow."), notice});
    ASSERT_TRUE(chat);
    EXPECT_EQ(chat->messages[0].isNotice, std::nullopt);
    EXPECT_EQ(chat->messages[1].isNotice, true);
    EXPECT_EQ(latestAssistantText(panelMessages(*chat)), "They flow.");
}

TEST(PanelHistory, TheLatestFinishedReplyIsExported) {
    VorqMessage typing = assistant("half");
    typing.isTyping = true;
    EXPECT_EQ(exportedText(std::vector{assistant("one"), assistant(" two "), user("ask"), typing,
                                       VorqMessage::placeholder(), assistant("Working...")}),
              " two ");
}

TEST(PanelHistory, WithoutAReplyAllThatIsSettledIsExported) {
    VorqMessage typing = user("half");
    typing.isTyping = true;
    EXPECT_EQ(exportedText(std::vector{user(" one "), user("\n"), typing, user("two")}),
              " one \n\ntwo");
    EXPECT_EQ(exportedText({}), "");
}

} // namespace
} // namespace vorq
