// What is strict and what is lenient in reading any file of the library, shown on notes.

#include "library/records/HubAIChat.h"
#include "library/records/HubTracker.h"
#include "library/records/SavedNote.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

constexpr const char* start =
    R"([{"id":"2f564652-466d-e486-522c-4f8d6102dd70","createdAt":"2026-03-01T10:20:30Z")";

std::optional<std::vector<SavedNote>> notesWith(const QByteArray& members) {
    return decodeSavedNotes(start + members + "}]");
}

std::optional<QString> textWith(const QByteArray& members) {
    const auto notes = notesWith(members);
    if (!notes) return std::nullopt;
    return notes->front().text;
}

TEST(RecordReader, OfEqualKeysTheLastCounts) {
    EXPECT_EQ(textWith(R"(,"text":"a","text":"b")"), "b");
    EXPECT_EQ(textWith(R"(,"text":1,"text":"b")"), "b");
    EXPECT_EQ(textWith(R"(,"text":"a","text":1)"), std::nullopt);
    EXPECT_EQ(textWith(R"(,"text":"a","text":null)"), std::nullopt);
    EXPECT_EQ(textWith(R"(,"text":"a","t\u0065xt":"b")"), "b");
}

TEST(RecordReader, AnEarlierEqualKeyLeavesNothing) {
    const auto notes = notesWith(R"(,"text":"","area":"study","area":null,"thoughts":"x",)"
                                 R"("thoughts":null,"thoughtsRTF":"eA==","thoughtsRTF":null)");
    ASSERT_TRUE(notes);
    EXPECT_EQ(notes->front().area, HubArea::Personal);
    EXPECT_EQ(notes->front().thoughts, "");
    EXPECT_EQ(notes->front().thoughtsRTF, std::nullopt);
}

TEST(RecordReader, EqualKeysInsideRecordsOfRecordsAreReadTheSame) {
    const QByteArray card = R"({"id":1,"front":"a","back":"","front":"b",)"
                            R"("id":"2f564652-466d-e486-522c-4f8d6102dd70"})";
    const auto notes = notesWith(R"(,"text":"","flashcards":[],"flashcards":[)" + card + "]");
    ASSERT_TRUE(notes);
    ASSERT_EQ(notes->front().flashcards.size(), 1);
    EXPECT_EQ(notes->front().flashcards.front().front, "b");
}

TEST(RecordReader, AnEarlierEqualKeyIsJsonToo) {
    EXPECT_EQ(textWith(R"(,"text":tru,"text":"b")"), std::nullopt);
    EXPECT_EQ(textWith(R"(,"text":[1,],"text":"b")"), std::nullopt);
}

TEST(RecordReader, KeysMayBeEscaped) {
    EXPECT_EQ(textWith(R"(,"\u0074ext":"a")"), "a");
    EXPECT_EQ(textWith(R"(,"text":"a","\q":1)"), std::nullopt);
    EXPECT_EQ(textWith(R"(,"text":"a","text\"":1,"":2,"\\":3)"), "a");
}

TEST(RecordReader, UnknownValuesArePassedOverIfTheyAreJson) {
    for (const char* value : {"1", "-0.5e-3", "123456789012345678901234567890", "true", "null",
                              R"("\u00e9\n")", "[]", "{}", R"([[{"a":[1,2,{"b":null}]}],"x"])"})
        EXPECT_EQ(textWith(R"(,"x":)" + QByteArray(value) + R"(,"text":"a")"), "a") << value;
    for (const char* value :
         {"",      "01",       "1.",          "+1",          "tru",      "True", "nul",
          "nulll", R"("\q")",  R"("\ud800")", "[1 2]",       "[1,]",     "[",    "[}",
          "{]",    R"({"a"})", R"({"a":})",   R"({"a":1,})", R"({1:2})", "'x'",  "NaN",
          "1e999", "[1]]",     R"({"a" 1})",  "// x"})
        EXPECT_EQ(textWith(R"(,"x":)" + QByteArray(value) + R"(,"text":"a")"), std::nullopt)
            << value;
}

TEST(RecordReader, DepthIsBounded) {
    const auto nested = [](qsizetype depth) {
        return R"(,"text":"a","x":)" + QByteArray(depth, '[') + QByteArray(depth, ']');
    };
    EXPECT_EQ(textWith(nested(900)), "a");
    EXPECT_EQ(textWith(nested(1100)), std::nullopt);
    EXPECT_EQ(textWith(nested(1'000'000)), std::nullopt);
    QByteArray objects = R"("a")";
    for (int depth = 0; depth < 5000; ++depth)
        objects = R"({"x":)" + objects + '}';
    EXPECT_EQ(textWith(R"(,"text":)" + objects), std::nullopt);
}

TEST(RecordReader, NothingMayFollowTheArray) {
    const QByteArray whole = start + QByteArray(R"(,"text":"a"}])");
    EXPECT_TRUE(decodeSavedNotes(whole + " \r\n\t"));
    EXPECT_TRUE(decodeSavedNotes(" \r\n\t" + whole));
    for (const char* rest : {"x", "]", "[]", ",", "\"", "1", "{}", "\f"})
        EXPECT_EQ(decodeSavedNotes(whole + rest), std::nullopt) << rest;
    EXPECT_EQ(decodeSavedNotes(whole + QByteArray(1, '\0')), std::nullopt);
}

TEST(RecordReader, EveryShorterFileIsRefused) {
    const QByteArray whole = start + QByteArray(R"(,"text":"a\n","x":[1,{"y":null}]}])");
    ASSERT_TRUE(decodeSavedNotes(whole));
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_EQ(decodeSavedNotes(whole.first(size)), std::nullopt) << size;
}

TEST(RecordReader, NoByteOfTheStructureMayBeAnother) {
    const QByteArray whole = start + QByteArray(R"(,"text":"a"}])");
    for (qsizetype at = 0; at < whole.size(); ++at) {
        if (QByteArrayView("[]{}:").indexOf(whole[at]) < 0 || whole.mid(at - 2, 3).contains("0:")) {
            continue; // of a date
        }
        for (const char other : {'[', '}', ',', ':', 'x', '\0', '\xFF'}) {
            if (whole[at] == other) continue;
            QByteArray damaged = whole;
            damaged[at] = other;
            EXPECT_EQ(decodeSavedNotes(damaged), std::nullopt) << damaged.toStdString();
        }
    }
}

TEST(RecordReader, StringsAreUtf8WithoutControlCharacters) {
    EXPECT_EQ(textWith(",\"text\":\"\uFEFFé日👋\""), "\uFEFFé日👋");
    for (const char* text :
         {"\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\x01", "a\nb", "a\tb"})
        EXPECT_EQ(textWith(",\"text\":\"" + QByteArray(text) + '"'), std::nullopt);
}

TEST(RecordReader, OtherEncodingsAreRefused) {
    const QByteArray whole = start + QByteArray(R"(,"text":"a"}])");
    EXPECT_EQ(decodeSavedNotes("\xEF\xBB\xBF" + whole), std::nullopt);
    QByteArray wide("\xFF\xFE");
    for (const char c : whole)
        wide += QByteArray(1, c) + QByteArray(1, '\0');
    EXPECT_EQ(decodeSavedNotes(wide), std::nullopt);
}

TEST(RecordReader, Base64MayHaveItsSlashesEscaped) {
    const auto notes = notesWith(R"(,"text":"","thoughtsRTF":"\/\/8=")");
    ASSERT_TRUE(notes);
    EXPECT_EQ(notes->front().thoughtsRTF, "\xFF\xFF");
    EXPECT_EQ(decodeSavedNotes(encode(*notes)), notes);
}

TEST(RecordReader, IdentitiesHaveOneForm) {
    const auto idOf = [](const char* id) {
        const auto trackers =
            decodeHubTrackers(R"([{"title":"","id":)" + QByteArray(id) + "}]", Date());
        return trackers ? std::optional(trackers->front().id) : std::nullopt;
    };
    EXPECT_EQ(idOf(R"("2F564652-466d-E486-522c-4F8D6102DD70")"),
              QUuid("2f564652-466d-e486-522c-4f8d6102dd70"));
    EXPECT_EQ(idOf(R"("00000000-0000-0000-0000-000000000000")"), QUuid());
    for (const char* id :
         {R"("{2F564652-466D-E486-522C-4F8D6102DD70}")", R"("2F564652466DE486522C4F8D6102DD70")",
          R"("2F564652-466D-E486-522C-4F8D6102DD7g")", R"("2F564652-466D-E486-522C-4F8D6102DD700")",
          R"("2F5646524466D-E486-522C-4F8D6102DD70")", R"("")", "1", "null"})
        EXPECT_EQ(idOf(id), std::nullopt) << id;
}

TEST(RecordReader, NumbersOfAnyFormAreRead) {
    const auto answerOf = [](const char* number) -> std::optional<qint64> {
        const auto chats = decodeHubAIChats(
            R"([{"id":"2f564652-466d-e486-522c-4f8d6102dd70","title":"",)"
            R"("createdAt":"2026-03-01T00:00:00Z","updatedAt":"2026-03-01T00:00:00Z","messages":[)"
            R"({"id":"2f564652-466d-e486-522c-4f8d6102dd70","role":"","text":"",)"
            R"("createdAt":"2026-03-01T00:00:00Z","quiz":{"primer":"","questions":[)"
            R"({"prompt":"","options":[],"answerIndex":)" +
            QByteArray(number) + "}]}}]}]");
        if (!chats) return std::nullopt;
        return chats->front().messages.front().quiz->questions.front().answerIndex;
    };
    EXPECT_EQ(answerOf("2"), 2);
    EXPECT_EQ(answerOf("-1"), -1);
    EXPECT_EQ(answerOf("2.0"), 2);
    EXPECT_EQ(answerOf("2e3"), 2000);
    for (const char* number : {"2.5", "1e300", "18446744073709551615", R"("2")", "true", "[]"})
        EXPECT_EQ(answerOf(number), std::nullopt) << number;
}

} // namespace
} // namespace vorq
