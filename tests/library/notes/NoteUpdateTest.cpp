#include "library/notes/NoteUpdate.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

SavedNote noteOf(const QString& text, const QString& thoughts = {}) {
    SavedNote note;
    note.text = text;
    note.thoughts = thoughts;
    return note;
}

QString updated(const SavedNote& note, QStringView loadedBody, QStringView reply) {
    const auto content = withReply(note, loadedBody, reply);
    return content ? content->plain : QString();
}

TEST(NoteUpdate, AReplyStandsBelowTheLoadedBody) {
    EXPECT_EQ(updated(noteOf("Rivers."), u"Rivers.", u"They flow."), "Rivers.\n\nThey flow.");
}

TEST(NoteUpdate, AReplyThatRepeatsTheNoteReplacesIt) {
    EXPECT_EQ(updated(noteOf("Rivers."), u"Rivers.", u"So: Rivers. And lakes."),
              "So: Rivers. And lakes.");
    EXPECT_EQ(updated(noteOf("# Plan\n- one"), u"# Plan\n- one", u"# Plan\n- one\n- two"),
              "Plan\n•\u00A0one\n•\u00A0two");
}

TEST(NoteUpdate, AReplyThatOnlyRepeatsTheSeedKeepsTheBody) {
    EXPECT_EQ(updated(noteOf("Rivers", "One.\nTwo."), u"Rivers", u"Rivers flow."),
              "One.\nTwo.\n\nRivers flow.");
}

TEST(NoteUpdate, ANoteThatWasNotLoadedIsNeverReplaced) {
    EXPECT_EQ(updated(noteOf("Rivers", "Body."), u"", u"They flow."), "Body.\n\nThey flow.");
    EXPECT_EQ(updated(noteOf(""), u"", u"They flow."), "They flow.");
}

TEST(NoteUpdate, TheBodyIsKeptThoughItsRichTextIsOlder) {
    SavedNote note = noteOf("Rivers", "My own words.");
    note.thoughtsRTF = VorqNoteImport::structure(u"An older body.")->rtf;
    EXPECT_EQ(updated(note, u"Rivers", u"They flow."), "My own words.\n\nThey flow.");
}

TEST(NoteUpdate, ASeedOfMarkdownDoesNotTakeThePlaceOfTheBody) {
    EXPECT_EQ(updated(noteOf("# Plan", "One.\nTwo."), u"# Plan", u"They flow."),
              "One.\nTwo.\n\nThey flow.");
}

TEST(NoteUpdate, AReplyOfWhiteSpaceIsNone) {
    EXPECT_EQ(withReply(noteOf("Rivers."), u"Rivers.", u" \n"), std::nullopt);
}

} // namespace
} // namespace vorq
