#include "doubles/documents/SmallPicture.h"
#include "doubles/ui/PanelStage.h"

#include <QAccessible>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class AttachTrayTest : public testing::Test {
  protected:
    void showNotes(int notes) {
        for (int i = 0; i < notes; ++i)
            stage.state->library().createBlankNote(u"Note %1"_s.arg(i), HubArea::Study);
        stage.show();
        stage.panel->tray()->setShown(true);
        stage.panel->tray()->setMode(AttachTrayState::Mode::Notes);
        ASSERT_TRUE(QTest::qWaitFor(
            [this] { return !stage.panel->attachableNotes()->appleNotesLoading(); }));
        stage.settle(400);
    }
    void click(QQuickItem* item) {
        ASSERT_TRUE(item);
        QTest::mouseClick(stage.window.get(), Qt::LeftButton, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    }
    [[nodiscard]] bool says(const QString& text) {
        for (QQuickItem* item : stage.findAll("Txt"))
            if (stage.find("AttachTray")->isAncestorOf(item) && item->isVisible() &&
                item->property("text").toString() == text)
                return true;
        return false;
    }

    PanelStage stage;
};

TEST_F(AttachTrayTest, ANoteIsTickedAndStaysInTheList) {
    showNotes(2);
    const QList<QQuickItem*> rows = stage.findAll("NoteRow");
    ASSERT_EQ(rows.size(), 2);
    click(rows[0]);
    EXPECT_TRUE(rows[0]->property("isChecked").toBool());
    EXPECT_FALSE(rows[1]->property("isChecked").toBool());
    ASSERT_EQ(stage.panel->attachments().count(), 1);
    EXPECT_EQ(composerDisplayNames(stage.panel->attachments().attachments()), QStringList("Notes"));
    EXPECT_TRUE(stage.panel->tray()->isShown()) << "several can be chosen";
    click(rows[1]);
    EXPECT_EQ(composerDisplayNames(stage.panel->attachments().attachments()),
              QStringList({"Notes 1", "Notes 2"}));
}

TEST_F(AttachTrayTest, ANoteIsHeardAsACheckBox) {
    QAccessible::setActive(true);
    showNotes(1);
    QAccessibleInterface& row = *QAccessible::queryAccessibleInterface(stage.find("NoteRow"));
    EXPECT_EQ(row.role(), QAccessible::CheckBox);
    EXPECT_FALSE(row.state().checked);
    row.actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(row.state().checked);
    QAccessible::setActive(false);
}

TEST_F(AttachTrayTest, KeysTickANoteToo) {
    showNotes(1);
    QQuickItem* row = stage.find("NoteRow");
    row->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(stage.window.get(), Qt::Key_Space);
    EXPECT_TRUE(row->property("isChecked").toBool());
    QTest::keyClick(stage.window.get(), Qt::Key_Return);
    EXPECT_FALSE(row->property("isChecked").toBool());
}

TEST_F(AttachTrayTest, ByKeysAloneItIsOpenedAndLeft) {
    stage.answer("A reply.");
    stage.show();
    stage.settle(100);
    const auto key = [&](Qt::Key key) {
        QTest::keyClick(stage.window.get(), key);
        stage.settle(300);
        return stage.window->activeFocusItem()->property("text").toString();
    };
    key(Qt::Key_Tab);
    EXPECT_EQ(key(Qt::Key_Space), "Attach from Notes") << "the first row has it at once";
    EXPECT_EQ(key(Qt::Key_Down), "Add study files");
    EXPECT_EQ(key(Qt::Key_Tab), "Add photos");
    EXPECT_EQ(key(Qt::Key_Backtab), "Add study files");
    EXPECT_EQ(key(Qt::Key_Up), "Attach from Notes");
    EXPECT_EQ(key(Qt::Key_Return), "Back");
    EXPECT_EQ(key(Qt::Key_Tab), "Done");
    key(Qt::Key_Return);
    EXPECT_FALSE(stage.panel->tray()->isShown());
    QTest::keyClick(stage.window.get(), Qt::Key_A);
    EXPECT_EQ(stage.panel->prompt().toLower(), "a") << "the draft has it again";
}

class SpokenTrayTest : public AttachTrayTest {
  protected:
    SpokenTrayTest() { QAccessible::setActive(true); }
    ~SpokenTrayTest() override { QAccessible::setActive(false); }
};

TEST_F(SpokenTrayTest, ItsRowsTellWhatStandsBelowTheirNames) {
    stage.show();
    stage.panel->tray()->setShown(true);
    stage.settle(100);
    QStringList told;
    for (QQuickItem* row : stage.findAll("TrayRow"))
        told += QAccessible::queryAccessibleInterface(row)->text(QAccessible::Description);
    EXPECT_EQ(told, QStringList({"Any note in your library", "Images, PDF, DOCX, PPTX…",
                                 "Screenshots, scans, pictures"}));
}

TEST_F(AttachTrayTest, WithoutNotesItSaysWhatToDo) {
    showNotes(0);
    EXPECT_TRUE(says("No notes found. Save a chat to Notes, then try again."));
    EXPECT_FALSE(says("Loading Notes…"));
}

TEST_F(AttachTrayTest, WithoutNotesItTriesAgain) {
    showNotes(0);
    stage.state->library().createBlankNote("Silt", HubArea::Study);
    for (QQuickItem* button : stage.findAll("TextButton"))
        if (button->isVisible() && button->property("text") == "Try again") {
            click(button);
            break;
        }
    stage.settle(100);
    EXPECT_TRUE(says("Silt"));
    EXPECT_FALSE(says("Try again"));
}

TEST_F(AttachTrayTest, NotesAreSearchedAndTickedByKeysAlone) {
    stage.show();
    for (const char* title : {"Silt", "Levees", "Reeds"})
        stage.state->library().createBlankNote(title, HubArea::Study);
    stage.panel->tray()->setShown(true);
    stage.settle(100);
    stage.find("TrayRow")->forceActiveFocus(Qt::TabFocusReason);
    const auto key = [this](Qt::Key key) {
        QTest::keyClick(stage.window.get(), key);
        stage.settle(100);
    };
    key(Qt::Key_Return);
    for (const Qt::Key letter : {Qt::Key_L, Qt::Key_E, Qt::Key_V})
        key(letter);
    EXPECT_TRUE(says("Levees"));
    EXPECT_FALSE(says("Silt"));
    EXPECT_EQ(stage.panel->prompt(), "") << "the search has the keyboard";
    key(Qt::Key_Down);
    key(Qt::Key_Space);
    ASSERT_EQ(stage.panel->attachments().count(), 1);
    EXPECT_EQ(stage.panel->attachments().attachments()[0].fileName, "Levees");
    key(Qt::Key_Up);
    key(Qt::Key_X);
    EXPECT_TRUE(says("No note holds “levx”."));
    EXPECT_TRUE(stage.panel->closeInnermost());
    stage.settle(100);
    EXPECT_TRUE(says("Silt")) << "Escape empties the search first";
    EXPECT_TRUE(stage.panel->tray()->isShown());
}

TEST_F(AttachTrayTest, ManyNotesScrollWithinThePanel) {
    showNotes(200);
    QQuickItem* tray = stage.find("AttachTray");
    EXPECT_FALSE(says("No notes found. Save a chat to Notes, then try again."));
    EXPECT_LE(tray->height(), 430);
    EXPECT_GT(tray->y(), 100);
}

TEST_F(AttachTrayTest, AtLargeTextItStaysWithinThePanelAndScrolls) {
    stage.look->setTextScale(2);
    showNotes(200);
    for (int i = 0; i < 20; ++i)
        stage.panel->intake()->attachFiles({QUrl(u"file:///files/number %1.pdf"_s.arg(i))});
    stage.settle(100);
    stage.drawFrame();
    const QQuickItem* tray = stage.find("AttachTray");
    EXPECT_GE(tray->y(), 0);
    EXPECT_LE(tray->y() + tray->height(), stage.root().height());
    QQuickItem* field = stage.find("SearchField");
    EXPECT_GE(field->mapToScene({0, 0}).y(), 0);
    stage.panel->tray()->setMode(AttachTrayState::Mode::Root);
    stage.settle(50);
    for (QQuickItem* row : stage.findAll("TrayRow")) {
        row->forceActiveFocus(Qt::TabFocusReason);
        stage.drawFrame();
        const QRectF place = row->mapRectToItem(tray, {0, 0, row->width(), row->height()});
        EXPECT_TRUE(QRectF(0, 0, tray->width(), tray->height()).contains(place))
            << qPrintable(row->property("text").toString());
    }
}

TEST_F(AttachTrayTest, TheSearchHasTheKeyboardAsSoonAsThereAreNotes) {
    stage.state->library().createBlankNote(u"Reeds"_s, HubArea::Study);
    stage.show();
    stage.panel->tray()->setShown(true);
    stage.settle(300);
    click(stage.find("TrayRow"));
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return !stage.panel->attachableNotes()->appleNotesLoading(); }));
    stage.settle(50);
    EXPECT_TRUE(stage.find("SearchField")->isAncestorOf(stage.window->activeFocusItem()) ||
                stage.find("SearchField") == stage.window->activeFocusItem());
}

class DropTest : public AttachTrayTest {
  protected:
    // As the platform does it: first the mouse comes in, then it lets go.
    bool drop(const QMimeData& data) {
        QDragEnterEvent enter({200, 200}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(stage.window.get(), &enter);
        if (!enter.isAccepted()) return false;
        QDropEvent event({200, 200}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(stage.window.get(), &event);
        return event.isAccepted();
    }
};

TEST_F(DropTest, WhatIsHeldOverThePanelIsShownToBeWelcome) {
    stage.show();
    const auto isShown = [this] {
        stage.settle(300);
        for (QQuickItem* item : stage.find("DropZone")->findChildren<QQuickItem*>())
            if (item->property("text") == "Drop to attach") return item->isVisible();
        return false;
    };
    EXPECT_FALSE(isShown());
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/files/a.txt")});
    QDragEnterEvent enter({200, 200}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(stage.window.get(), &enter);
    EXPECT_TRUE(isShown());
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(stage.window.get(), &leave);
    EXPECT_FALSE(isShown());
}

// A source deletes what it has been told to be moved.
TEST_F(DropTest, WhatIsDraggedToBeMovedIsCopied) {
    stage.show();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/files/a.txt")});
    const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
    const auto send = [this](QDropEvent& event) {
        EXPECT_EQ(event.proposedAction(), Qt::MoveAction);
        QCoreApplication::sendEvent(stage.window.get(), &event);
        EXPECT_TRUE(event.isAccepted());
    };
    // The platform sends a move with each of these, whose action the source is told.
    QDragEnterEvent enter({200, 200}, actions, &data, Qt::LeftButton, Qt::ShiftModifier);
    send(enter);
    QDragMoveEvent move({200, 200}, actions, &data, Qt::LeftButton, Qt::ShiftModifier);
    send(move);
    EXPECT_EQ(move.dropAction(), Qt::CopyAction);
    QDropEvent release({200, 200}, actions, &data, Qt::LeftButton, Qt::ShiftModifier);
    send(release);
    EXPECT_EQ(release.dropAction(), Qt::CopyAction);
    EXPECT_EQ(stage.panel->attachments().count(), 1);
}

TEST_F(DropTest, WhatCanOnlyBeMovedIsNotTaken) {
    stage.show();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/files/a.txt")});
    QDragEnterEvent enter({200, 200}, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(stage.window.get(), &enter);
    EXPECT_FALSE(enter.isAccepted());
    EXPECT_FALSE(stage.find("DropZone")->property("containsDrag").toBool());
}

TEST_F(DropTest, SeveralFilesKeepTheirOrder) {
    stage.show();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/files/b.txt"), QUrl::fromLocalFile("/files/a.txt")});
    EXPECT_TRUE(drop(data));
    EXPECT_EQ(stage.panel->attachments().count(), 2);
    EXPECT_EQ(stage.panel->attachments().clips()[0].title, "b.txt");
    EXPECT_EQ(stage.panel->attachments().clips()[1].title, "a.txt");
}

TEST_F(DropTest, APictureWithoutAFileBecomesAClip) {
    stage.show();
    QMimeData data;
    data.setData("image/png", smallPicture());
    EXPECT_TRUE(drop(data));
    ASSERT_TRUE(QTest::qWaitFor([this] { return stage.reader.underWay() == 1; }));
    EXPECT_EQ(stage.reader.readings()[0]->picture, smallPicture());
    EXPECT_EQ(stage.panel->attachments().clips()[0].title, "Dropped image.png");
}

TEST_F(DropTest, APictureOfAPageIsTakenAndItsAddressIsNot) {
    stage.show();
    QMimeData data;
    data.setUrls({QUrl("https://example.org/a.png")});
    data.setData("image/png", smallPicture());
    EXPECT_TRUE(drop(data));
    EXPECT_EQ(stage.panel->attachments().count(), 1);
    EXPECT_EQ(stage.panel->notice(), "");
}

TEST_F(DropTest, AnAddressAloneIsANotice) {
    stage.show();
    QMimeData data;
    data.setUrls({QUrl("https://example.org/a.png")});
    EXPECT_TRUE(drop(data));
    EXPECT_EQ(stage.panel->attachments().count(), 0);
    EXPECT_NE(stage.panel->notice(), "");
}

TEST_F(DropTest, TextIsNotTaken) {
    stage.show();
    QMimeData data;
    data.setText("words");
    EXPECT_FALSE(drop(data));
}

} // namespace
} // namespace vorq
