#include "capture/attachments/PromptAttachment.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

PromptAttachment note(const QString& name) {
    PromptAttachment attachment;
    attachment.fileName = name;
    attachment.noteID = QUuid::createUuid();
    return attachment;
}

PromptAttachment file(const QString& name, std::optional<QString> text = {}) {
    PromptAttachment attachment;
    attachment.fileName = name;
    attachment.textContent = std::move(text);
    return attachment;
}

TEST(PathExtension, IsWhatFollowsTheLastDot) {
    EXPECT_EQ(pathExtension(u"my.file.ODT"), "odt");
    EXPECT_EQ(pathExtension(u"notes"), "");
    EXPECT_EQ(pathExtension(u".profile"), "");
    EXPECT_EQ(pathExtension(u"a."), "");
}

TEST(ComposerDisplayNames, NumbersSeveralNotesOnly) {
    EXPECT_EQ(composerDisplayNames({note("x"), file("a.pdf")}), QStringList({"Notes", "a.pdf"}));
    EXPECT_EQ(composerDisplayNames({note("x"), file("a.pdf"), note("y")}),
              QStringList({"Notes 1", "a.pdf", "Notes 2"}));
}

TEST(ComposerDisplayNames, ADeepenedSelectionIsNoNote) {
    PromptAttachment deepen = file("x", "text");
    deepen.isDeepenSelection = true;
    EXPECT_EQ(composerDisplayNames({deepen, note("x")}), QStringList({"deepen", "Notes"}));
}

TEST(AttachmentText, SetsEachTextUnderItsFileName) {
    EXPECT_EQ(attachmentText({file("a.txt", " one \n"), file("b.png"), file("c", " \n"),
                              file("%1.md", "two %2")}),
              "--- Attached file: a.txt ---\none\n\n--- Attached file: %1.md ---\ntwo %2");
}

} // namespace
} // namespace vorq
