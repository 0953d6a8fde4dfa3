#include "shell/panel/AttachmentIntake.h"

#include "capture/attachments/FileAttachmentReader.h"
#include "platform/testing/ScriptedDocumentTools.h"
#include "shell/panel/AttachmentList.h"
#include "support/async/OnPool.h"

#include <QBuffer>
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
    [[nodiscard]] bool waitForClips(int count) const {
        return QTest::qWaitFor([this, count] { return attachments.count() == count; });
    }
    static QByteArray picture() {
        QImage image(4, 4, QImage::Format_RGB32);
        image.fill(Qt::red);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        return bytes;
    }

    QTemporaryDir folder;
    QString path = folder.filePath("a.txt");
    AttachmentList attachments;
    FileAttachmentReader reader{std::make_shared<ScriptedDocumentTools>()};
    std::unique_ptr<AttachmentIntake> intake =
        std::make_unique<AttachmentIntake>(attachments, reader);
    QSignalSpy chosen{intake.get(), &AttachmentIntake::chosen};
    QSignalSpy refused{intake.get(), &AttachmentIntake::refused};
};

TEST_F(AttachmentIntakeTest, FilesBecomeClipsAndFoldersAreRefused) {
    intake->attachFiles({QUrl::fromLocalFile(path), QUrl::fromLocalFile(folder.path())});
    EXPECT_EQ(chosen.count(), 1);
    ASSERT_TRUE(waitForClips(1));
    ASSERT_TRUE(QTest::qWaitFor([this] { return refused.count() == 1; }));
    EXPECT_EQ(refused[0][0], folder.path() + ": only files can be attached.");
    EXPECT_EQ(attachments.attachments()[0].textContent, "text");
}

TEST_F(AttachmentIntakeTest, EachOfManyFilesIsRead) {
    const QUrl url = QUrl::fromLocalFile(path);
    intake->attachFiles({url, url, url});
    EXPECT_TRUE(waitForClips(3));
    EXPECT_EQ(refused.count(), 0);
}

TEST_F(AttachmentIntakeTest, AFileThatCannotBeReadIsRefused) {
    intake->attachFiles({QUrl::fromLocalFile("/nowhere/a.txt")});
    ASSERT_TRUE(QTest::qWaitFor([this] { return refused.count() == 1; }));
    EXPECT_FALSE(refused[0][0].toString().isEmpty());
    EXPECT_EQ(attachments.count(), 0);
}

TEST_F(AttachmentIntakeTest, AFileThatIsStillReadAtTheEndIsDropped) {
    intake->attachFiles({QUrl::fromLocalFile(path)});
    QCoreApplication::sendPostedEvents(); // it is on its way
    intake.reset();
    blocking::pool().waitForDone();
    QCoreApplication::processEvents();
    EXPECT_EQ(attachments.count(), 0);
}

TEST_F(AttachmentIntakeTest, APictureThatIsHandedOverBecomesAClip) {
    EXPECT_FALSE(intake->attachPicture("no picture"));
    EXPECT_EQ(chosen.count(), 0);
    EXPECT_TRUE(intake->attachPicture(picture()));
    EXPECT_EQ(chosen.count(), 1);
    ASSERT_TRUE(waitForClips(1));
    EXPECT_TRUE(attachments.attachments()[0].imageDataURL->startsWith("data:image/png;base64,"));
}

TEST_F(AttachmentIntakeTest, TheClipboardGivesFilesAndPicturesAndLeavesTextsAlone) {
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->setText("text");
    EXPECT_FALSE(intake->attachFromClipboard());
    clipboard->setImage(QImage::fromData(picture()));
    EXPECT_TRUE(intake->attachFromClipboard());
    ASSERT_TRUE(waitForClips(1));
    auto* files = new QMimeData;
    files->setUrls({QUrl::fromLocalFile(path)});
    clipboard->setMimeData(files);
    EXPECT_TRUE(intake->attachFromClipboard());
    EXPECT_TRUE(waitForClips(2));
    clipboard->clear();
}

} // namespace
} // namespace vorq
