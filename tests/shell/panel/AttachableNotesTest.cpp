#include "shell/panel/AttachableNotes.h"
#include "doubles/capture/ScriptedAttachmentReader.h"
#include "doubles/panel/ConversationFixture.h"
#include "shell/panel/PanelViewModel.h"

#include <QSignalSpy>
#include <QTest>

namespace vorq {
namespace {

using testing::ElementsAre;

class AttachableNotesTest : public ConversationFixture {
  protected:
    AttachableNotesTest() {
        m_silt = state().library().createBlankNote("Silt", HubArea::Study);
        state().library().updateNoteThoughts(m_silt, "Silt\nis carried far", std::nullopt);
        m_notesApplication.notes = {{"Levees", "Ridges beside a river."}, {"Blank", ""}};
    }
    ~AttachableNotesTest() override { m_model.reset(); }

    PanelViewModel& model() {
        if (!m_model) m_model = std::make_unique<PanelViewModel>(state(), m_clock, m_reader);
        return *m_model;
    }
    AttachableNotes& notes() { return *model().attachableNotes(); }

    void open() {
        model().tray()->setShown(true);
        model().tray()->setMode(AttachTrayState::Mode::Notes);
    }
    void openAndWait() {
        open();
        ASSERT_TRUE(QTest::qWaitFor([this] { return !notes().appleNotesLoading(); }));
    }
    bool waitForClips(int count) {
        return QTest::qWaitFor(
            [this, count] { return model().attachments().attachments().size() == count; });
    }

    [[nodiscard]] QStringList titles() {
        QStringList titles;
        for (int row = 0; row < notes().count(); ++row)
            titles += notes().index(row).data(AttachableNotes::TitleRole).toString();
        return titles;
    }
    [[nodiscard]] bool isChecked(int row) {
        return notes().index(row).data(AttachableNotes::CheckedRole).toBool();
    }
    [[nodiscard]] PromptAttachment clip() { return model().attachments().attachments().front(); }
    [[nodiscard]] bool waitForFailed() {
        return QTest::qWaitFor(
            [this] { return model().attachments().has(PromptClip::State::Failed); });
    }

    QUuid m_silt;
    ScriptedAttachmentReader m_reader;
    std::unique_ptr<PanelViewModel> m_model;
};

TEST_F(AttachableNotesTest, TheLibraryIsThereAtOnceAndTheNotesApplicationAfterIt) {
    open();
    EXPECT_TRUE(notes().appleNotesLoading());
    EXPECT_THAT(titles(), ElementsAre("Silt"));
    openAndWait();
    EXPECT_THAT(titles(), ElementsAre("Silt", "Levees", "Blank"));
    EXPECT_EQ(notes().index(0).data(AttachableNotes::DetailRole), "is carried far");
}

TEST_F(AttachableNotesTest, OpeningAgainListsEachNoteOnce) {
    openAndWait();
    model().tray()->setShown(false);
    openAndWait();
    EXPECT_THAT(titles(), ElementsAre("Silt", "Levees", "Blank"));
}

TEST_F(AttachableNotesTest, ANoteOfTheLibraryIsPutOnAndTakenOff) {
    openAndWait();
    notes().toggle(0);
    ASSERT_EQ(model().attachments().count(), 1);
    EXPECT_TRUE(isChecked(0));
    EXPECT_EQ(clip().noteID, m_silt);
    EXPECT_EQ(clip().fileName, "Silt");
    EXPECT_EQ(clip().textContent, "Silt\nis carried far");
    notes().toggle(0);
    EXPECT_EQ(model().attachments().count(), 0);
    EXPECT_FALSE(isChecked(0));
}

TEST_F(AttachableNotesTest, TheNoteBeingStudiedIsTicked) {
    state().study().setActiveNote(m_silt, "body");
    openAndWait();
    EXPECT_TRUE(isChecked(0));
}

TEST_F(AttachableNotesTest, ANoteOfTheNotesApplicationIsReadAndAttached) {
    openAndWait();
    notes().toggle(1);
    ASSERT_TRUE(waitForClips(1));
    EXPECT_EQ(clip().fileName, "Levees");
    EXPECT_EQ(clip().textContent, "Ridges beside a river.");
    EXPECT_FALSE(clip().isHubNote());
    EXPECT_TRUE(isChecked(1));
    notes().toggle(1);
    EXPECT_EQ(model().attachments().count(), 0);
    EXPECT_FALSE(isChecked(1));
}

TEST_F(AttachableNotesTest, AClipTakenOffElsewhereTakesTheTickWithIt) {
    openAndWait();
    notes().toggle(1);
    ASSERT_TRUE(waitForClips(1));
    QSignalSpy told(&notes(), &AttachableNotes::dataChanged);
    model().attachments().removeAt(0);
    EXPECT_FALSE(isChecked(1));
    EXPECT_EQ(told.count(), 1);
    notes().toggle(1);
    EXPECT_TRUE(waitForClips(1)) << "it can be attached anew";
}

TEST_F(AttachableNotesTest, ANoteThatIsReadHasItsClipAndItsTickAtOnce) {
    openAndWait();
    m_notesApplication.isHanging = true;
    notes().toggle(1);
    EXPECT_TRUE(isChecked(1));
    ASSERT_EQ(model().attachments().count(), 1);
    EXPECT_EQ(model().attachments().clips()[0].state, PromptClip::State::Loading);
    EXPECT_EQ(model().attachments().clips()[0].title, "Levees");
    m_notesApplication.release();
    EXPECT_TRUE(waitForClips(1));
}

TEST_F(AttachableNotesTest, TakenBackBeforeItIsReadANoteIsNotAttached) {
    openAndWait();
    notes().toggle(1);
    notes().toggle(1);
    notes().toggle(2);
    ASSERT_TRUE(waitForFailed()) << "the note after it has been read";
    EXPECT_EQ(model().attachments().count(), 1);
    EXPECT_FALSE(isChecked(1));
}

TEST_F(AttachableNotesTest, ANoteThatCannotBeReadSaysSoOnItsClip) {
    openAndWait();
    notes().toggle(2);
    ASSERT_TRUE(waitForFailed());
    EXPECT_EQ(model().attachments().clips()[0].reason, "There is no text to attach.");
    EXPECT_FALSE(isChecked(2));
    m_notesApplication.notes[1].second = "A body after all.";
    notes().toggle(2);
    ASSERT_TRUE(waitForClips(1)) << "it is read anew";
    EXPECT_EQ(model().attachments().count(), 1) << "in place of the one that failed";
}

TEST_F(AttachableNotesTest, ASearchLeavesWhatHoldsEachOfItsWords) {
    openAndWait();
    notes().setSearch("  fAr carried ");
    EXPECT_THAT(titles(), ElementsAre("Silt"));
    notes().toggle(0);
    EXPECT_TRUE(isChecked(0));
    EXPECT_EQ(clip().fileName, "Silt");
    notes().setSearch("application b");
    EXPECT_THAT(titles(), ElementsAre("Blank"));
    notes().setSearch("none of them");
    EXPECT_EQ(notes().count(), 0);
    EXPECT_FALSE(notes().isEmpty());
    notes().setSearch("");
    EXPECT_THAT(titles(), ElementsAre("Silt", "Levees", "Blank"));
    EXPECT_TRUE(isChecked(0));
}

TEST_F(AttachableNotesTest, NotesThatComeDuringASearchAreSearchedToo) {
    open();
    notes().setSearch("lev");
    EXPECT_EQ(notes().count(), 0);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !notes().appleNotesLoading(); }));
    EXPECT_THAT(titles(), ElementsAre("Levees"));
}

TEST_F(AttachableNotesTest, OpeningAgainForgetsTheSearch) {
    openAndWait();
    notes().setSearch("lev");
    model().tray()->setShown(false);
    openAndWait();
    EXPECT_EQ(notes().search(), "");
    EXPECT_EQ(notes().count(), 3);
}

TEST_F(AttachableNotesTest, WithoutNotesNothingIsListed) {
    state().library().deleteSavedNote(*state().library().savedNotes().find(m_silt));
    m_notesApplication.notes.clear();
    openAndWait();
    EXPECT_EQ(notes().count(), 0);
    notes().toggle(0);
    EXPECT_EQ(model().attachments().count(), 0);
}

TEST_F(AttachableNotesTest, AModelThatGoesWhileItAsksLeavesNothingBehind) {
    open();
    notes().toggle(0);
    m_model.reset();
    QTest::qWait(20);
}

} // namespace
} // namespace vorq
