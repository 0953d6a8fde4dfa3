#include "capture/notes/NoteDraft.h"

#include "doubles/capture/CaptureFixture.h"
#include "platform/testing/ScriptedNotesBridge.h"

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class NoteDraftTest : public testing::Test {
  protected:
    NoteDraft::Saved save(const QString& text) {
        return Running<NoteDraft::Saved>(draft.saveHighlightIntoAppleNotesDraft(text, {})).result();
    }

    ScriptedNotesBridge notes;
    NoteDraft draft{notes};
};

TEST_F(NoteDraftTest, TheFirstTextMakesANoteAndTheNextIsAddedToIt) {
    EXPECT_TRUE(save("  Lighthouses\nwarn ships.\n"));
    EXPECT_TRUE(save("They are painted red."));
    EXPECT_THAT(
        notes.notes,
        ElementsAre(Pair("Lighthouses", "Lighthouses\nwarn ships.\n\nThey are painted red.")));
    EXPECT_EQ(draft.activeAppleNoteDraftID(), "1");
}

TEST_F(NoteDraftTest, ASealedDraftGetsNothingMore) {
    EXPECT_TRUE(save("one"));
    EXPECT_TRUE(draft.pushAppleNoteDraft());
    EXPECT_FALSE(draft.pushAppleNoteDraft());
    EXPECT_TRUE(save("two"));
    EXPECT_THAT(notes.notes, ElementsAre(Pair("one", "one"), Pair("two", "two")));
}

TEST_F(NoteDraftTest, SealingWithoutADraftFails) {
    EXPECT_FALSE(draft.pushAppleNoteDraft());
}

TEST_F(NoteDraftTest, ADraftThatTheUserDeletedIsReplacedInTheSameSave) {
    EXPECT_TRUE(save("one"));
    notes.notes.clear();
    EXPECT_TRUE(save("two"));
    EXPECT_THAT(notes.notes, ElementsAre(Pair("two", "two")));
    EXPECT_EQ(draft.activeAppleNoteDraftID(), "1");
}

TEST_F(NoteDraftTest, AFailedCreationLeavesNoDraftAndSaysWhy) {
    notes.refusal = "No notes application.";
    EXPECT_EQ(save("one"), std::unexpected(QString("No notes application.")));
    EXPECT_EQ(draft.activeAppleNoteDraftID(), "");
    notes.refusal.reset();
    EXPECT_TRUE(save("two"));
    EXPECT_THAT(notes.notes, ElementsAre(Pair("two", "two")));
}

TEST_F(NoteDraftTest, ABlankTextIsNothingToSave) {
    EXPECT_EQ(save(" \n\t"),
              std::unexpected(QString("Highlight text first, then save it as a note.")));
    EXPECT_THAT(notes.notes, IsEmpty());
}

TEST_F(NoteDraftTest, TheTitleIsTheFirstLineThatSaysSomething) {
    EXPECT_TRUE(save("\n\n\u2028  **A bold start**  \nmore"));
    EXPECT_TRUE(draft.pushAppleNoteDraft());
    EXPECT_TRUE(save(QString(200, u'x')));
    EXPECT_TRUE(draft.pushAppleNoteDraft());
    EXPECT_TRUE(save("** **\nunder a line of marks"));
    EXPECT_EQ(notes.notes[0].first, "A bold start");
    EXPECT_EQ(notes.notes[1].first, QString(80, u'x'));
    EXPECT_EQ(notes.notes[2].first, "Vorq");
}

} // namespace
} // namespace vorq
