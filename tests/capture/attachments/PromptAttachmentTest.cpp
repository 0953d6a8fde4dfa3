#include "capture/attachments/PromptAttachment.h"

#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class PromptAttachmentTest : public testing::Test {
  protected:
    QTemporaryDir m_folder;

    [[nodiscard]] QString put(const QString& name, const QByteArray& bytes) const {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
};

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

TEST_F(PromptAttachmentTest, ReadsTextAsUtf8) {
    const auto loaded = PromptAttachment::load(put("a.txt", "café 👋"));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->fileName, "a.txt");
    EXPECT_EQ(loaded->textContent, u"café 👋"_s);
    EXPECT_FALSE(loaded->imageDataURL);
}

TEST_F(PromptAttachmentTest, ReadsTextAsUtf16WhenItIsNotUtf8) {
    QStringEncoder encoder(QStringEncoder::Utf16LE, QStringEncoder::Flag::WriteBom);
    const QByteArray bytes = encoder.encode(u"Größe"_s);
    const auto loaded = PromptAttachment::load(put("a.log", bytes));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->textContent, u"Größe"_s);
}

TEST_F(PromptAttachmentTest, CutsTextToItsLimitInCharacters) {
    const QByteArray accented = QByteArrayLiteral("e\xCC\x81").repeated(60001);
    const auto loaded = PromptAttachment::load(put("a.md", accented));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->textContent->size(), 120000);
}

TEST_F(PromptAttachmentTest, ReadsNoMoreOfAHugeTextThanItMay) {
    const QByteArray cut = "x" + QByteArrayLiteral("\xF0\x9F\x91\x8B").repeated(2 << 20);
    const auto loaded = PromptAttachment::load(put("huge.txt", cut));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->textContent->size(), 1 + 2 * 59999);
}

TEST_F(PromptAttachmentTest, RefusesAHugeImageWithoutReadingItAll) {
    QFile file(m_folder.filePath("huge.png"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(qint64{3} << 30));
    const auto loaded = PromptAttachment::load(file.fileName());
    ASSERT_FALSE(loaded);
    EXPECT_TRUE(loaded.error().contains("too large"));
}

TEST_F(PromptAttachmentTest, RefusesWhatIsNoFileWithoutReadingIt) {
    const QString pipe = m_folder.filePath("x.txt");
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    for (const QString& path : {pipe, u"/dev/zero"_s, m_folder.path()}) {
        const auto loaded = PromptAttachment::load(path);
        ASSERT_FALSE(loaded) << qPrintable(path);
        EXPECT_EQ(loaded.error(), path + ": only files can be attached.");
    }
}

TEST_F(PromptAttachmentTest, LeavesWhatIsInAPipe) {
    const QString pipe = m_folder.filePath("x.txt");
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    const int end = ::open(qPrintable(pipe), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    ASSERT_EQ(::write(end, "for another", 11), 11);
    EXPECT_FALSE(PromptAttachment::load(pipe));
    char read[16] = {};
    EXPECT_EQ(::read(end, read, sizeof read), 11);
    ::close(end);
}

// As of "vorq ask --file <(git diff)".
TEST_F(PromptAttachmentTest, ReadsAPipeForTheTerminal) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    ASSERT_EQ(::write(ends[1], "a diff", 6), 6);
    ::close(ends[1]);
    const auto loaded =
        PromptAttachment::load(u"/proc/self/fd/%1"_s.arg(ends[0]), PromptAttachment::Pipes::Read);
    ::close(ends[0]);
    ASSERT_TRUE(loaded) << qPrintable(loaded.error());
    EXPECT_EQ(loaded->textContent, "a diff");
    EXPECT_FALSE(PromptAttachment::load("/dev/zero", PromptAttachment::Pipes::Read));
}

TEST_F(PromptAttachmentTest, TakesAnEmptyFile) {
    const auto empty = PromptAttachment::load(put("empty.txt", ""));
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->textContent, "");
}

TEST_F(PromptAttachmentTest, RefusesWhatIsNoText) {
    const auto loaded = PromptAttachment::load(put("a.bin", QByteArray::fromHex("fffe00d8ff")));
    ASSERT_FALSE(loaded);
    EXPECT_TRUE(loaded.error().contains("not a text"));
}

TEST_F(PromptAttachmentTest, NamesAFileThatIsMissing) {
    const auto loaded = PromptAttachment::load(m_folder.filePath("none.txt"));
    ASSERT_FALSE(loaded);
    EXPECT_TRUE(loaded.error().contains("none.txt"));
}

TEST_F(PromptAttachmentTest, TakesUpperCaseExtensionsAsImages) {
    const auto loaded = PromptAttachment::load(put("a.PNG", "\x89PNG"));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->imageDataURL, "data:image/png;base64,iVBORw==");
    EXPECT_FALSE(loaded->textContent);
}

TEST_F(PromptAttachmentTest, KnowsAJpegByItsFirstBytes) {
    EXPECT_EQ(imageDataURL("\xFF\xD8\xFF"), "data:image/jpeg;base64,/9j/");
}

TEST_F(PromptAttachmentTest, RefusesAnImageOfTheLimit) {
    EXPECT_TRUE(imageDataURL(QByteArray(3499999, 'x')));
    EXPECT_FALSE(imageDataURL(QByteArray(3500000, 'x')));
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
