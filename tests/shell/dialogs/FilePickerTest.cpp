#include "shell/dialogs/FilePicker.h"
#include "doubles/ui/PanelStage.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::Contains;
using testing::Not;

class FilePickerTest : public testing::Test {
  protected:
    FilePickerTest() {
        // The test draws its own dialog, whatever the desktop has.
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QObject::connect(stage.panel.get(), &PanelViewModel::filesWanted, &picker,
                         &FilePicker::choose);
        QObject::connect(&picker, &FilePicker::chosen, stage.panel->intake(),
                         &AttachmentIntake::attachFiles);
    }

    static QFileDialog* dialog() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* found = qobject_cast<QFileDialog*>(widget); found && found->isVisible())
                return found;
        return nullptr;
    }
    QFileDialog* open(bool picturesOnly) {
        emit stage.panel->filesWanted(picturesOnly);
        return dialog();
    }
    static QStringList patternsOf(const QFileDialog& dialog) {
        const QString filter = dialog.nameFilters().front();
        return filter.section('(', 1).chopped(1).split(' ');
    }

    PanelStage stage;
    PanelHolds holds;
    FilePicker picker{holds};
};

TEST_F(FilePickerTest, OffersWhatCanBeRead) {
    QFileDialog* shown = open(false);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->fileMode(), QFileDialog::ExistingFiles);
    for (const char* pattern :
         {"*.txt", "*.md", "*.png", "*.heic", "*.JPG", "*.pdf", "*.docx", "*.doc", "*.pptx",
          "*.ppt", "*.rtf", "*.pages", "*.key", "*.odt", "*.odp"})
        EXPECT_THAT(patternsOf(*shown), Contains(QString(pattern)));
}

TEST_F(FilePickerTest, OffersPicturesAloneWhereTheyAreWanted) {
    QFileDialog* shown = open(true);
    ASSERT_TRUE(shown);
    EXPECT_THAT(patternsOf(*shown), Contains(QString("*.jpeg")));
    EXPECT_THAT(patternsOf(*shown), Not(Contains(QString("*.pdf"))));
}

TEST_F(FilePickerTest, BelongsToThePanelsWindow) {
    stage.show();
    picker.setOwner(stage.window.get());
    const QFileDialog* shown = open(false);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->windowHandle()->transientParent(), stage.window.get());
}

TEST_F(FilePickerTest, AsksOnceAtATime) {
    QFileDialog* shown = open(false);
    EXPECT_EQ(open(false), shown);
}

TEST_F(FilePickerTest, AsksAgainRightAfterNothingWasChosen) {
    QFileDialog* shown = open(false);
    ASSERT_TRUE(shown);
    shown->reject();
    EXPECT_TRUE(open(false));
}

TEST_F(FilePickerTest, HoldsThePanelWhileItIsOpen) {
    QSignalSpy closed(&picker, &FilePicker::closed);
    QFileDialog* shown = open(false);
    open(false);
    EXPECT_TRUE(holds.isHeld(PanelHoldKind::Dialog));
    shown->reject();
    EXPECT_FALSE(holds.isHeld());
    EXPECT_EQ(closed.count(), 1);
    EXPECT_EQ(stage.panel->attachments().count(), 0);
}

TEST_F(FilePickerTest, GoesWithThePanel) {
    open(false);
    picker.close();
    EXPECT_FALSE(dialog());
    EXPECT_FALSE(holds.isHeld());
    picker.close();
}

TEST_F(FilePickerTest, WhatIsChosenBecomesAClip) {
    const QTemporaryDir folder;
    QFile file(folder.filePath("silt.txt"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Silt settles.");
    file.close();
    QFileDialog* shown = open(false);
    ASSERT_TRUE(shown);
    shown->selectFile(file.fileName());
    static_cast<QDialog*>(shown)->accept();
    ASSERT_TRUE(QTest::qWaitFor([this] { return stage.reader.underWay() == 1; }));
    EXPECT_EQ(stage.reader.readings()[0]->path, file.fileName());
    stage.reader.finish(0, "Silt settles.");
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return stage.panel->attachments().attachments().size() == 1; }));
    EXPECT_EQ(stage.panel->attachments().attachments()[0].textContent, "Silt settles.");
}

} // namespace
} // namespace vorq
