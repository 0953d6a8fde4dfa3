#include "shell/panel/AttachmentList.h"

#include <QAbstractItemModelTester>

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

TEST_F(AttachmentListTest, UnknownRowsAreLeftAlone) {
    list.append(file("a"));
    list.removeAt(-1);
    list.removeAt(1);
    EXPECT_EQ(list.count(), 1);
}

} // namespace
} // namespace vorq
