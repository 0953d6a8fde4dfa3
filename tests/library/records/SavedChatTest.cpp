#include "library/records/SavedChat.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;

TEST(SavedChat, IsWrittenWithItsKeysInOrder) {
    const QUuid id("2f564652-466d-e486-522c-4f8d6102dd70");
    const SavedChat chat{id, "Plan", Date(0s), {{id, "system", "a/b"}}};
    const QByteArray file = encode(std::vector{chat});
    EXPECT_EQ(file, R"([
  {
    "createdAt" : "1970-01-01T00:00:00Z",
    "id" : "2F564652-466D-E486-522C-4F8D6102DD70",
    "messages" : [
      {
        "id" : "2F564652-466D-E486-522C-4F8D6102DD70",
        "role" : "system",
        "text" : "a\/b"
      }
    ],
    "title" : "Plan"
  }
])");
    EXPECT_EQ(decodeSavedChats(file), std::vector{chat});
}

TEST(SavedChat, WhatWasSentWithAMessageIsKeptAndOlderFilesLackIt) {
    const QUuid id("2f564652-466d-e486-522c-4f8d6102dd70");
    const SavedChat chat{id, "Plan", Date(0s), {{id, "user", "a", "Firefox", "captured"}}};
    const QByteArray file = encode(std::vector{chat});
    EXPECT_TRUE(file.contains(R"("sentFrom" : "Firefox",)")) << file.constData();
    EXPECT_TRUE(file.contains(R"("sentText" : "captured",)")) << file.constData();
    EXPECT_EQ(decodeSavedChats(file), std::vector{chat});
    QByteArray older = file;
    older.replace("sentFrom", "unknown").replace("sentText", "other");
    const auto decoded = decodeSavedChats(older);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->front().messages.front().sentText, std::nullopt);
}

TEST(SavedChat, ANoticeIsMarkedAndOnlyANotice) {
    const QUuid id("2f564652-466d-e486-522c-4f8d6102dd70");
    SavedChat chat{id, "Plan", Date(0s), {{id, "assistant", "a"}}};
    EXPECT_FALSE(encode(std::vector{chat}).contains("isNotice"));
    chat.messages.front().isNotice = true;
    const QByteArray file = encode(std::vector{chat});
    EXPECT_TRUE(file.contains(R"("isNotice" : true,)")) << file.constData();
    EXPECT_EQ(decodeSavedChats(file), std::vector{chat});
}

TEST(SavedChat, NoFieldMayBeMissing) {
    const QByteArray file = encode(std::vector{SavedChat{{}, "t", Date(0s), {{}}}});
    ASSERT_NE(decodeSavedChats(file), std::nullopt);
    for (const char* key : {"createdAt", "id", "messages", "role", "text", "title"}) {
        QByteArray without = file;
        without.replace('"' + QByteArray(key) + '"', "\"other\"");
        EXPECT_EQ(decodeSavedChats(without), std::nullopt) << key;
    }
}

TEST(SavedChat, AnEmptyListIsAnEmptyLineInBrackets) {
    EXPECT_EQ(encode(std::vector<SavedChat>()), "[\n\n]");
}

} // namespace
} // namespace vorq
