#include "shell/panel/AttachmentList.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace vorq {
namespace {

PromptAttachment note() {
    PromptAttachment attachment;
    attachment.noteID = QUuid::createUuid();
    return attachment;
}

PromptAttachment file(const QString& name) {
    PromptAttachment attachment;
    attachment.fileName = name;
    return attachment;
}

class AttachmentListTest : public testing::Test {
  protected:
    QString at(int row, int role) { return list.data(list.index(row), role).toString(); }

    AttachmentList list;
    QAbstractItemModelTester tester{&list, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(AttachmentListTest, ASecondNoteNumbersTheFirst) {
    list.append(note());
    EXPECT_EQ(at(0, AttachmentList::NameRole), "Notes");
    list.append(note());
    EXPECT_EQ(at(0, AttachmentList::NameRole), "Notes 1");
    EXPECT_EQ(at(1, AttachmentList::NameRole), "Notes 2");
    list.removeAt(0);
    EXPECT_EQ(at(0, AttachmentList::NameRole), "Notes");
}

TEST_F(AttachmentListTest, KindsDecideTheIcons) {
    PromptAttachment photo = file("a.png");
    photo.imageDataURL = "data:";
    PromptAttachment deepen;
    deepen.isDeepenSelection = true;
    deepen.textContent = " an\nexcerpt ";
    for (const PromptAttachment& attachment : {file("a.txt"), photo, note(), deepen})
        list.append(attachment);
    EXPECT_EQ(at(0, AttachmentList::KindRole), "doc");
    EXPECT_EQ(at(1, AttachmentList::KindRole), "photo");
    EXPECT_EQ(at(2, AttachmentList::KindRole), "note");
    EXPECT_EQ(at(3, AttachmentList::KindRole), "deepen");
    EXPECT_EQ(at(3, AttachmentList::NameRole), "deepen");
    EXPECT_EQ(at(3, AttachmentList::DetailRole), "an excerpt");
}

TEST_F(AttachmentListTest, ThePictureOfAPageStandsForItsDocument) {
    PromptAttachment scan = file("scan.pdf");
    scan.imageDataURL = "data:";
    list.append(scan);
    EXPECT_EQ(at(0, AttachmentList::KindRole), "doc");
}

TEST_F(AttachmentListTest, WhatIsLoadingOrFailedIsNoAttachment) {
    const PromptAttachment photo = file("a.PNG");
    list.appendLoading(photo);
    EXPECT_EQ(at(0, AttachmentList::KindRole), "photo");
    EXPECT_TRUE(list.attachments().isEmpty());
    list.fail(photo.id, "It is locked.");
    EXPECT_TRUE(list.attachments().isEmpty());
    EXPECT_EQ(at(0, AttachmentList::ReasonRole), "It is locked.");
    list.retry(0);
    PromptAttachment read = file("a.PNG");
    read.imageDataURL = "data:";
    list.resolve(photo.id, read);
    ASSERT_EQ(list.attachments().size(), 1);
    EXPECT_EQ(list.attachments()[0].id, photo.id) << "it is the clip that it was";
    EXPECT_EQ(list.attachments()[0].imageDataURL, "data:");
}

TEST_F(AttachmentListTest, OnlyWhatChangesIsTold) {
    const PromptAttachment second = file("b");
    list.append(file("a"));
    list.appendLoading(second);
    QSignalSpy told(&list, &AttachmentList::dataChanged);
    list.fail(second.id, "It is locked.");
    ASSERT_EQ(told.count(), 1);
    EXPECT_EQ(told[0][0].toModelIndex().row(), 1);
    EXPECT_EQ(told[0][2].value<QList<int>>(),
              QList<int>({AttachmentList::LoadingRole, AttachmentList::FailedRole,
                          AttachmentList::ReasonRole}));
}

TEST_F(AttachmentListTest, UnknownRowsAndClipsAreLeftAlone) {
    list.append(file("a"));
    list.removeAt(-1);
    list.removeAt(1);
    list.retry(-1);
    list.retry(0);
    list.retry(1);
    list.fail(QUuid::createUuid(), "It is locked.");
    list.resolve(QUuid::createUuid(), file("b"));
    EXPECT_EQ(list.count(), 1);
    EXPECT_EQ(list.attachments().size(), 1);
}

} // namespace
} // namespace vorq
