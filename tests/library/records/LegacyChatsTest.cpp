#include "library/records/LegacyChats.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;

SavedChat panelChat(const QString& title, int messages) {
    SavedChat chat{QUuid::createUuid(), title, Date(1'700'000'000s), {}};
    for (int index = 0; index < messages; ++index)
        chat.messages.push_back(
            {QUuid::createUuid(), index % 2 ? "assistant" : "system", QString::number(index)});
    return chat;
}

HubAIChat hubChat(const QString& title, std::size_t messages) {
    HubAIChat chat;
    chat.title = title;
    chat.messages.resize(messages);
    return chat;
}

TEST(LegacyChats, BecomeSavedChatsOfTheHubWithTheirMessages) {
    const SavedChat legacy = panelChat("Plan", 3);
    const std::vector<HubAIChat> converted = hubChatsFromPanel({legacy}, {});
    ASSERT_EQ(converted.size(), 1U);
    const HubAIChat& chat = converted.front();
    EXPECT_FALSE(chat.id.isNull());
    EXPECT_NE(chat.id, legacy.id);
    EXPECT_EQ(chat.title, "Plan");
    EXPECT_TRUE(chat.isSaved);
    EXPECT_TRUE(chat.sourceNoteIDs.empty());
    EXPECT_EQ(chat.createdAt, legacy.createdAt);
    EXPECT_EQ(chat.updatedAt, legacy.createdAt);
    ASSERT_EQ(chat.messages.size(), 3U);
    for (std::size_t index = 0; index < 3; ++index) {
        HubAIMessage expected;
        expected.id = chat.messages[index].id;
        expected.role = legacy.messages[index].role;
        expected.text = legacy.messages[index].text;
        expected.createdAt = legacy.createdAt;
        EXPECT_EQ(chat.messages[index], expected);
        EXPECT_NE(chat.messages[index].id, legacy.messages[index].id);
    }
}

TEST(LegacyChats, AreLeftOutIfTheHubHasOneOfTheSameTitleAndLength) {
    const std::vector<SavedChat> legacy = {panelChat("Plan", 2), panelChat("Plan", 3)};
    const std::vector<HubAIChat> converted = hubChatsFromPanel(legacy, {hubChat("Plan", 2)});
    ASSERT_EQ(converted.size(), 1U);
    EXPECT_EQ(converted.front().messages.size(), 3U);
}

TEST(LegacyChats, TwoOfAKindAreBothTaken) {
    const std::vector<SavedChat> legacy = {panelChat("Plan", 2), panelChat("Plan", 2)};
    EXPECT_EQ(hubChatsFromPanel(legacy, {}).size(), 2U);
}

} // namespace
} // namespace vorq
