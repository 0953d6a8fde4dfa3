#include "library/records/SavedNote.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono;

constexpr const char* oldNote =
    R"({"id":"2f564652-466d-e486-522c-4f8d6102dd70","text":"seed","createdAt":"2026-03-01T10:20:30Z"})";

QByteArray fileWith(const QByteArray& notes) {
    return '[' + notes + ']';
}

SavedNote noteWith(const QString& text, const QString& thoughts = {}) {
    SavedNote note;
    note.text = text;
    note.thoughts = thoughts;
    return note;
}

TEST(SavedNote, OldRecordReadsWithDefaultsAndIsWrittenWhole) {
    const auto notes = decodeSavedNotes(fileWith(oldNote));
    ASSERT_TRUE(notes);
    ASSERT_EQ(notes->size(), 1);
    SavedNote expected = noteWith("seed");
    expected.id = QUuid("2f564652-466d-e486-522c-4f8d6102dd70");
    expected.createdAt = sys_days(year(2026) / 3 / 1) + 10h + 20min + 30s;
    EXPECT_EQ(notes->front(), expected);
    EXPECT_EQ(encode(*notes), R"([
  {
    "area" : "personal",
    "createdAt" : "2026-03-01T10:20:30Z",
    "flashcards" : [

    ],
    "id" : "2F564652-466D-E486-522C-4F8D6102DD70",
    "text" : "seed",
    "thoughts" : ""
  }
])");
}

TEST(SavedNote, EveryFieldSurvivesTheFile) {
    SavedNote note = noteWith("a/b \"q\"", "naïve 日本\n👩‍👩‍👧");
    note.id = QUuid::createUuid();
    note.thoughtsRTF = "{\\rtf1 x}";
    note.flashcards = {{QUuid::createUuid(), "front", "back"}, {QUuid::createUuid(), "", ""}};
    note.area = HubArea::Research;
    note.createdAt = Date(1'700'000'000s);
    const std::vector<SavedNote> notes = {note, SavedNote()};
    EXPECT_EQ(decodeSavedNotes(encode(notes)), notes);
}

TEST(SavedNote, NullCountsAsAbsentWhereAFieldMayBe) {
    QByteArray record = oldNote;
    record.chop(1);
    const auto notes = decodeSavedNotes(
        fileWith(record + R"(,"thoughts":null,"thoughtsRTF":null,"flashcards":null,"area":null})"));
    EXPECT_EQ(notes, decodeSavedNotes(fileWith(oldNote)));
}

TEST(SavedNote, OneRecordThatDoesNotFitEmptiesTheList) {
    QByteArray record = oldNote;
    record.chop(1);
    for (const char* member :
         {R"("area":"garden")", R"("thoughts":1)", R"("thoughtsRTF":"!")", R"("flashcards":{})",
          R"("flashcards":[{"id":"2f564652-466d-e486-522c-4f8d6102dd70","front":""}])",
          R"("createdAt":"2026-03-01T10:20:30.5Z")", R"("id":"x")", R"("text":null)"})
        EXPECT_EQ(
            decodeSavedNotes(fileWith(QByteArray(oldNote) + ',' + record + ',' + member + '}')),
            std::nullopt)
            << member;
    EXPECT_NE(decodeSavedNotes(fileWith(record + R"(,"unknown":{"x":[1]}})")), std::nullopt);
}

TEST(SavedNote, ADocumentOfAnotherShapeIsNoList) {
    for (const char* json : {"", "{}", "null", "[null]", "[{}]", "[", "[] x", "\xFF"})
        EXPECT_EQ(decodeSavedNotes(json), std::nullopt) << json;
}

TEST(StudySourceOfANote, FallsBackOnTheSeed) {
    EXPECT_EQ(studySource(noteWith("abc", " \n ")), "abc");
}

TEST(DisplayTitle, DropsLeadingBullets) {
    EXPECT_EQ(displayTitle(noteWith("", "• • Plan for May")), "Plan for May");
    EXPECT_EQ(displayTitle(noteWith("", "•\u00A0•")), "New Note");
}

TEST(DisplayTitle, DropsOnlyAnEnclosingPairOfAsterisks) {
    EXPECT_EQ(displayTitle(noteWith("", "**Plan for May**\nmore")), "Plan for May");
    EXPECT_EQ(displayTitle(noteWith("", "**Plan** for May")), "**Plan** for May");
}

TEST(DisplayTitle, IsCutAfter72Characters) {
    const QString family = u"👩‍👩‍👧"_s;
    EXPECT_EQ(displayTitle(noteWith(family.repeated(72))), family.repeated(72));
    EXPECT_EQ(displayTitle(noteWith(family.repeated(73))), family.repeated(72) + u'…');
}

TEST(DisplayTitle, NamesAnEmptyNote) {
    EXPECT_EQ(displayTitle(noteWith("", "\n")), "New Note");
}

TEST(NoteSnippet, IsWhatFollowsTheFirstLineInOne) {
    EXPECT_EQ(noteSnippet(noteWith("", "Title\none\n\u2028two\n")), "one  two");
    EXPECT_EQ(noteSnippet(noteWith("", "Title\n \n")), std::nullopt);
    EXPECT_EQ(noteSnippet(noteWith("")), std::nullopt);
}

TEST(NoteSnippet, IsCutAfter160Characters) {
    const QString line(160, u'y');
    EXPECT_EQ(noteSnippet(noteWith("", "T\n" + line)), line);
    EXPECT_EQ(noteSnippet(noteWith("", "T\n" + line + 'y')), line + u'…');
}

} // namespace
} // namespace vorq
