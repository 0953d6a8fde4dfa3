#include "doubles/ui/TypedTurns.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

/// The clip by which the user sees, and ends, the study of a note.
class StudyClipTest : public TypedTurns {
  protected:
    StudyClipTest() { stage.state->library().createBlankNote("Leaves are green.", HubArea::Study); }

    void answerTurn() {
        stage.transport.last().respond(200, R"(data: {"text":"So.","done":true,"summary":"So."})");
        settle();
    }
    [[nodiscard]] QList<QQuickItem*> clips() {
        QList<QQuickItem*> shown;
        for (QQuickItem* clip : stage.findAll("AttachmentClip"))
            if (clip->isVisible()) shown += clip;
        return shown;
    }
    [[nodiscard]] QQuickItem* cross() {
        for (QQuickItem* item : stage.findAll("IconButton"))
            if (item->property("text").toString() == "Remove Notes" && item->isVisible())
                return item;
        return nullptr;
    }
    [[nodiscard]] QString sentText() {
        return stage.transport.last().json().value("selectedText").toString();
    }
    [[nodiscard]] QString placeholder() { return stage.panel->promptPlaceholder(); }
};

TEST_F(StudyClipTest, ALoadedNoteShowsItsClipAndKeepsItAfterEachPrompt) {
    enter("latest note");
    ASSERT_EQ(clips().size(), 1);
    EXPECT_EQ(clips()[0]->property("label").toString(), "Notes");
    enter("and why?");
    EXPECT_EQ(sentText(), "Leaves are green.");
    EXPECT_EQ(clips().size(), 1);
    answerTurn();
    EXPECT_EQ(clips().size(), 1);
    EXPECT_EQ(placeholder(), "Ask about this note…");
}

TEST_F(StudyClipTest, APressOnItsCrossEndsTheStudy) {
    enter("latest note");
    QQuickItem* button = cross();
    ASSERT_TRUE(button);
    stage.drawFrame();
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {},
                      button->mapToScene({button->width() / 2, button->height() / 2}).toPoint());
    stage.settle(50);
    EXPECT_TRUE(clips().isEmpty());
    EXPECT_EQ(placeholder(), "Ask Vorq for help…");
    enter("and now?");
    EXPECT_EQ(sentText(), "") << "nothing of the note goes along";
    EXPECT_EQ(stage.transport.last().json().value("prompt").toString(), "and now?");
}

TEST_F(StudyClipTest, KeysEndTheStudyToo) {
    enter("latest note");
    QQuickItem* button = cross();
    ASSERT_TRUE(button);
    for (int press = 0; press < 10 && !button->hasActiveFocus(); ++press)
        QTest::keyClick(stage.window.get(), Qt::Key_Tab);
    ASSERT_TRUE(button->hasActiveFocus());
    QTest::keyClick(stage.window.get(), Qt::Key_Return);
    stage.settle(50);
    EXPECT_TRUE(clips().isEmpty());
    EXPECT_FALSE(stage.state->study().isStudyingNote());
    enter("and now?");
    EXPECT_EQ(sentText(), "");
}

TEST_F(StudyClipTest, CapturedTextStaysWhenTheStudyEnds) {
    enter("latest note");
    stage.state->panel().setHighlightedText("of a browser");
    QQuickItem* button = cross();
    ASSERT_TRUE(button);
    button->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(stage.window.get(), Qt::Key_Space);
    stage.settle(50);
    enter("and now?");
    EXPECT_EQ(sentText(), "of a browser");
}

TEST_F(StudyClipTest, UntickingTheNoteInTheTrayEndsTheStudy) {
    enter("latest note");
    stage.panel->tray()->setShown(true);
    stage.panel->tray()->setMode(AttachTrayState::Mode::Notes);
    stage.settle(400);
    QQuickItem* row = stage.find("NoteRow");
    ASSERT_TRUE(row);
    ASSERT_TRUE(row->property("isChecked").toBool());
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {},
                      row->mapToScene({row->width() / 2, row->height() / 2}).toPoint());
    stage.settle(50);
    EXPECT_TRUE(clips().isEmpty());
    EXPECT_FALSE(stage.state->study().isStudyingNote());
}

TEST_F(StudyClipTest, FlashcardsOfANoteShowItsClip) {
    enter("flashcards");
    EXPECT_EQ(clips().size(), 1);
}

TEST_F(StudyClipTest, EnterWithNothingTypedDoesNotSendTheNoteAgain) {
    enter("latest note");
    enter("and why?");
    answerTurn();
    const std::size_t sent = stage.transport.count();
    enter("");
    EXPECT_EQ(stage.transport.count(), sent);
}

} // namespace
} // namespace vorq
