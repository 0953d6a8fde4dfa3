#include "shell/panel/AttachmentIntake.h"

#include "capture/attachments/FileAttachmentReader.h"
#include "doubles/documents/SmallPicture.h"
#include "platform/testing/ScriptedDocumentTools.h"
#include "shell/panel/AttachmentList.h"
#include "shell/panel/ClipLoader.h"
#include "support/async/OnPool.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

#include <gtest/gtest.h>

#include <memory>

namespace vorq {
namespace {

class AttachmentIntakeTest : public testing::Test {
  protected:
    AttachmentIntakeTest() {
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write("text");
    }
    [[nodiscard]] bool waitForReady(int count) const {
        return QTest::qWaitFor([this, count] { return attachments.attachments().size() == count; });
    }
    [[nodiscard]] bool waitForFailed() const {
        return QTest::qWaitFor([this] { return attachments.has(PromptClip::State::Failed); });
    }
    static void copy(const QString& format, const QByteArray& bytes) {
        auto* data = new QMimeData;
        data->setData(format, bytes);
        QGuiApplication::clipboard()->setMimeData(data);
    }

    QTemporaryDir folder;
    QString path = folder.filePath("a.txt");
    AttachmentList attachments;
    FileAttachmentReader reader{std::make_shared<ScriptedDocumentTools>()};
    std::unique_ptr<ClipLoader> loader = std::make_unique<ClipLoader>(attachments);
    std::unique_ptr<AttachmentIntake> intake = std::make_unique<AttachmentIntake>(*loader, reader);
    QSignalSpy chosen{intake.get(), &AttachmentIntake::chosen};
    QSignalSpy refused{intake.get(), &AttachmentIntake::refused};
};

TEST_F(AttachmentIntakeTest, FilesBecomeClipsAndFoldersAreRefused) {
    intake->attachFiles({QUrl::fromLocalFile(path), QUrl::fromLocalFile(folder.path())});
    EXPECT_EQ(chosen.count(), 1);
    EXPECT_EQ(attachments.count(), 2) << "at once";
    ASSERT_TRUE(waitForReady(1));
    ASSERT_TRUE(waitForFailed());
    EXPECT_EQ(attachments.clips()[0].attachment.textContent, "text");
    EXPECT_EQ(attachments.clips()[1].reason, "Only files can be attached.");
}

TEST_F(AttachmentIntakeTest, EachOfManyFilesIsRead) {
    const QUrl url = QUrl::fromLocalFile(path);
    intake->attachFiles({url, url, url, url, url, url});
    EXPECT_TRUE(waitForReady(6));
}

TEST_F(AttachmentIntakeTest, AFileThatCannotBeReadSaysWhyOnItsClip) {
    intake->attachFiles({QUrl::fromLocalFile("/nowhere/a.txt")});
    ASSERT_TRUE(waitForFailed());
    EXPECT_FALSE(attachments.clips()[0].reason.isEmpty());
    EXPECT_FALSE(attachments.clips()[0].reason.contains("/nowhere"));
    EXPECT_EQ(refused.count(), 0);
}

TEST_F(AttachmentIntakeTest, WhatIsNoFileIsRefused) {
    intake->attachFiles({QUrl("https://example.org/a.png")});
    ASSERT_EQ(refused.count(), 1);
    EXPECT_EQ(refused[0][0], "https://example.org/a.png: only files can be attached.");
    EXPECT_EQ(attachments.count(), 0);
}

TEST_F(AttachmentIntakeTest, AFileThatIsStillReadAtTheEndIsDropped) {
    intake->attachFiles({QUrl::fromLocalFile(path)});
    QCoreApplication::sendPostedEvents(); // it is on its way
    intake.reset();
    loader.reset();
    blocking::pool().waitForDone();
    QCoreApplication::processEvents();
    EXPECT_TRUE(attachments.attachments().isEmpty());
}

TEST_F(AttachmentIntakeTest, APictureThatIsHandedOverBecomesAClip) {
    EXPECT_FALSE(intake->attachPicture("no picture"));
    EXPECT_EQ(chosen.count(), 0);
    EXPECT_TRUE(intake->attachPicture(smallPicture()));
    EXPECT_EQ(chosen.count(), 1);
    ASSERT_TRUE(waitForReady(1));
    EXPECT_TRUE(attachments.attachments()[0].imageDataURL->startsWith("data:image/"));
    EXPECT_EQ(attachments.attachments()[0].fileName, "Dropped image.png");
}

TEST_F(AttachmentIntakeTest, TheClipboardGivesFilesAndPicturesAndLeavesTextsAlone) {
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->setText("text");
    EXPECT_FALSE(intake->attachFromClipboard());
    clipboard->setImage(QImage::fromData(smallPicture()));
    EXPECT_TRUE(intake->attachFromClipboard());
    ASSERT_TRUE(waitForReady(1));
    copy("image/png", smallPicture());
    EXPECT_TRUE(intake->attachFromClipboard());
    ASSERT_TRUE(waitForReady(2));
    EXPECT_EQ(attachments.attachments()[1].fileName, "Pasted image.png");
    auto* files = new QMimeData;
    files->setUrls({QUrl::fromLocalFile(path), QUrl::fromLocalFile(path)});
    clipboard->setMimeData(files);
    EXPECT_TRUE(intake->attachFromClipboard());
    EXPECT_TRUE(waitForReady(4));
    clipboard->clear();
}

TEST_F(AttachmentIntakeTest, APictureThatIsAnnouncedAndNotHandedOverHasFailed) {
    copy("image/png", "");
    EXPECT_TRUE(intake->attachFromClipboard());
    ASSERT_TRUE(waitForFailed());
    EXPECT_EQ(attachments.clips()[0].reason, "The file is damaged or of another kind.");
    QGuiApplication::clipboard()->clear();
}

TEST_F(AttachmentIntakeTest, FilesThatAFileManagerCopiesInItsOwnFormAreTaken) {
    const QByteArray address = QUrl::fromLocalFile(path).toEncoded();
    copy("x-special/gnome-copied-files", "copy\n" + address + "\r\n" + address);
    EXPECT_TRUE(intake->attachFromClipboard());
    EXPECT_TRUE(waitForReady(2));
    QGuiApplication::clipboard()->clear();
}

TEST_F(AttachmentIntakeTest, APictureThatABrowserCopiesIsTakenAndItsAddressIsNot) {
    auto* data = new QMimeData;
    data->setUrls({QUrl("https://example.org/a.png")});
    data->setData("image/png", smallPicture());
    QGuiApplication::clipboard()->setMimeData(data);
    EXPECT_TRUE(intake->attachFromClipboard());
    EXPECT_TRUE(waitForReady(1));
    EXPECT_EQ(refused.count(), 0);
    QGuiApplication::clipboard()->clear();
}

TEST_F(AttachmentIntakeTest, APictureOfCopiedWordsIsLeftToTheWords) {
    auto* data = new QMimeData;
    data->setText("words");
    data->setData("image/png", smallPicture());
    QGuiApplication::clipboard()->setMimeData(data);
    EXPECT_FALSE(intake->attachFromClipboard());
    QGuiApplication::clipboard()->clear();
}

} // namespace
} // namespace vorq
