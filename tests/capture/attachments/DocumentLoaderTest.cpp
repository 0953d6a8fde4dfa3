// Which way a file goes and what becomes of it; the tools answer as told.

#include "capture/attachments/DocumentLoader.h"
#include "platform/testing/ScriptedDocumentTools.h"

#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <chrono>
#include <condition_variable>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class DocumentLoaderTest : public testing::Test {
  protected:
    QTemporaryDir m_folder;
    ScriptedDocumentTools m_tools;
    std::stop_source m_stop;

    [[nodiscard]] QString put(const QString& name, const QByteArray& bytes) const {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    [[nodiscard]] QString putHuge(const QString& name, qint64 size) const {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(size));
        return file.fileName();
    }
    AttachmentResult load(const QString& path,
                          PromptAttachment::Pipes pipes = PromptAttachment::Pipes::Refused) {
        return DocumentLoader(m_tools, pipes, m_stop.get_token()).load(path);
    }
    // What waits for longer is stopped.
    AttachmentResult loadWithin(std::chrono::seconds patience, const QString& path) {
        std::mutex mutex;
        std::condition_variable_any ended;
        std::jthread stopper([&](const std::stop_token& done) {
            std::unique_lock lock(mutex);
            ended.wait_for(lock, done, patience, [] { return false; });
            if (!done.stop_requested()) m_stop.request_stop();
        });
        return load(path, PromptAttachment::Pipes::Read);
    }
    // The text of an attachment that must come about.
    QString textOf(const QString& path) {
        const auto loaded = load(path);
        return loaded ? loaded->textContent.value_or("no text") : "refused: " + loaded.error();
    }
};

TEST_F(DocumentLoaderTest, ReadsTextAsUtf8) {
    const auto loaded = load(put("a.txt", "café 👋"));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->fileName, "a.txt");
    EXPECT_EQ(loaded->textContent, u"café 👋"_s);
    EXPECT_FALSE(loaded->imageDataURL);
}

TEST_F(DocumentLoaderTest, ReadsTextAsUtf16WhenItIsNotUtf8) {
    QStringEncoder encoder(QStringEncoder::Utf16LE, QStringEncoder::Flag::WriteBom);
    const QByteArray bytes = encoder.encode(u"Größe"_s);
    const auto loaded = load(put("a.log", bytes));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->textContent, u"Größe"_s);
}

TEST_F(DocumentLoaderTest, CutsTextToItsLimitInCharacters) {
    const QByteArray accented = QByteArrayLiteral("e\xCC\x81").repeated(60001);
    const auto loaded = load(put("a.md", accented));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->textContent->size(), 120000);
}

TEST_F(DocumentLoaderTest, ReadsNoMoreOfAHugeTextThanItMay) {
    const QByteArray cut = "x" + QByteArrayLiteral("\xF0\x9F\x91\x8B").repeated(2 << 20);
    const auto loaded = load(put("huge.txt", cut));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->textContent->size(), 1 + 2 * 59999);
}

TEST_F(DocumentLoaderTest, RefusesWhatIsNoFileWithoutReadingIt) {
    const QString pipe = m_folder.filePath("x.txt");
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    for (const QString& path : {pipe, u"/dev/zero"_s, m_folder.path()}) {
        const auto loaded = load(path);
        ASSERT_FALSE(loaded) << qPrintable(path);
        EXPECT_EQ(loaded.error(), path + ": only files can be attached.");
    }
}

TEST_F(DocumentLoaderTest, LeavesWhatIsInAPipe) {
    const QString pipe = m_folder.filePath("x.txt");
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    const int end = ::open(qPrintable(pipe), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    ASSERT_EQ(::write(end, "for another", 11), 11);
    EXPECT_FALSE(load(pipe));
    char read[16] = {};
    EXPECT_EQ(::read(end, read, sizeof read), 11);
    ::close(end);
}

// As of "vorq ask --file <(git diff)".
TEST_F(DocumentLoaderTest, ReadsAPipeForTheTerminal) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    ASSERT_EQ(::write(ends[1], "a diff", 6), 6);
    ::close(ends[1]);
    const auto loaded = load(u"/proc/self/fd/%1"_s.arg(ends[0]), PromptAttachment::Pipes::Read);
    ::close(ends[0]);
    ASSERT_TRUE(loaded) << qPrintable(loaded.error());
    EXPECT_EQ(loaded->textContent, "a diff");
    EXPECT_FALSE(load("/dev/zero", PromptAttachment::Pipes::Read));
}

// As of "true | vorq ask --file /dev/stdin", which is such a link.
TEST_F(DocumentLoaderTest, APipeThatNobodyWritesAnyMoreIsEmptyWhateverItIsCalled) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    ::close(ends[1]);
    const QString link = m_folder.filePath("stdin");
    ASSERT_TRUE(QFile::link(u"/proc/self/fd/%1"_s.arg(ends[0]), link));
    const auto loaded = loadWithin(std::chrono::seconds(10), link);
    ::close(ends[0]);
    ASSERT_TRUE(loaded) << qPrintable(loaded.error());
    EXPECT_EQ(loaded->textContent, "");
}

TEST_F(DocumentLoaderTest, TakesAnEmptyFile) {
    const auto empty = load(put("empty.txt", ""));
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->textContent, "");
}

TEST_F(DocumentLoaderTest, RefusesWhatIsNoText) {
    const auto loaded = load(put("a.bin", QByteArray::fromHex("fffe00d8ff")));
    ASSERT_FALSE(loaded);
    EXPECT_TRUE(loaded.error().contains("not a text"));
}

TEST_F(DocumentLoaderTest, NamesAFileThatIsMissing) {
    const auto loaded = load(m_folder.filePath("none.txt"));
    ASSERT_FALSE(loaded);
    EXPECT_TRUE(loaded.error().contains("none.txt"));
}

TEST_F(DocumentLoaderTest, CutsATextByOneCharacterTooMany) {
    EXPECT_EQ(textOf(put("a.txt", QByteArray(60001, 'x'))), QString(60000, u'x'));
}

TEST_F(DocumentLoaderTest, AFileOfTenGigabytesIsRefusedWhateverItsKind) {
    for (const QString name : {"a.png", "a.pdf", "a.docx", "a.txt"}) {
        const auto loaded = load(putHuge(name, qint64{10} << 30));
        ASSERT_FALSE(loaded) << qPrintable(name);
        EXPECT_TRUE(loaded.error().contains("too large"));
    }
    EXPECT_EQ(m_tools.asked, QStringList());
}

TEST_F(DocumentLoaderTest, WaitsForTheWriterOfANamedPipeUntilItIsStopped) {
    const QString pipe = m_folder.filePath("x.txt");
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    std::jthread stopper([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        m_stop.request_stop();
    });
    EXPECT_FALSE(load(pipe, PromptAttachment::Pipes::Read));
}

TEST_F(DocumentLoaderTest, AnImageGoesAsJpegWhateverTheCaseOfItsExtension) {
    m_tools.jpeg = "\xFF\xD8\xFF";
    const auto loaded = load(put("a.PNG", "\x89PNG"));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->imageDataURL, "data:image/jpeg;base64,/9j/");
    EXPECT_FALSE(loaded->textContent);
    EXPECT_EQ(loaded->fileName, "a.PNG");
}

TEST_F(DocumentLoaderTest, AJpegOfTheLimitIsTooLarge) {
    m_tools.jpeg = QByteArray(3500000, 'x');
    EXPECT_EQ(load(put("a.png", "\x89PNG"))->imageDataURL, "data:image/png;base64,iVBORw==");
    m_tools.jpeg = QByteArray(3499999, 'x');
    EXPECT_TRUE(load(put("a.png", "\x89PNG"))->imageDataURL->startsWith("data:image/jpeg;"));
}

TEST_F(DocumentLoaderTest, WhatCannotBeDecodedGoesAsItIs) {
    EXPECT_EQ(load(put("a.heic", "\x89PNG"))->imageDataURL, "data:image/png;base64,iVBORw==");
    EXPECT_EQ(load(put("a.webp", "\xFF\xD8\xFF"))->imageDataURL, "data:image/jpeg;base64,/9j/");
}

TEST_F(DocumentLoaderTest, AnImageThatIsTooLargeBothWaysIsRefused) {
    m_tools.jpeg = QByteArray();
    EXPECT_TRUE(load(put("a.png", QByteArray(3499999, 'x'))));
    const auto loaded = load(put("b.png", QByteArray(3500000, 'x')));
    ASSERT_FALSE(loaded);
    EXPECT_TRUE(loaded.error().endsWith("the image is too large; at most 3.5 MB can be sent."));
}

TEST_F(DocumentLoaderTest, AnImageWithoutBytesIsRefused) {
    const auto loaded = load(put("a.png", ""));
    ASSERT_FALSE(loaded);
    EXPECT_TRUE(loaded.error().endsWith("a.png: the file is damaged or of another kind."));
    EXPECT_FALSE(DocumentLoader(m_tools, PromptAttachment::Pipes::Refused, {})
                     .loadPicture({}, "Pasted image.png"));
}

TEST_F(DocumentLoaderTest, AnImageOfTooManyPixelsIsRefusedHoweverSmallItsFile) {
    m_tools.jpeg = std::unexpected(DocumentFailure::TooLarge);
    const auto loaded = load(put("a.png", "\x89PNG"));
    ASSERT_FALSE(loaded);
    EXPECT_TRUE(loaded.error().contains("128 megapixels"));
}

TEST_F(DocumentLoaderTest, APdfGivesItsText) {
    m_tools.pdf = PdfContents{QString(60001, u'x'), {}};
    const auto loaded = load(put("a.Pdf", "%PDF"));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->textContent, QString(60000, u'x'));
    EXPECT_FALSE(loaded->imageDataURL);
}

TEST_F(DocumentLoaderTest, AScannedPdfGivesItsFirstPage) {
    m_tools.pdf = PdfContents{{}, "\xFF\xD8\xFF"};
    const auto loaded = load(put("a.pdf", "%PDF"));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->imageDataURL, "data:image/jpeg;base64,/9j/");
    EXPECT_EQ(loaded->textContent, u"(PDF has no extractable text — first page "
                                   "attached as an image for review.)"_s);
}

TEST_F(DocumentLoaderTest, APdfWithoutTextAndPageSaysSo) {
    m_tools.pdf = PdfContents{};
    const auto loaded = load(put("a.pdf", "%PDF"));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->textContent, "(PDF attached; no extractable text.)");
    EXPECT_FALSE(loaded->imageDataURL);
}

TEST_F(DocumentLoaderTest, APdfThatCannotBeOpenedIsRefusedWithTheReason) {
    const QString path = put("a.pdf", "%PDF");
    for (const auto& [failure, reason] :
         std::map<DocumentFailure, QString>{{DocumentFailure::Unreadable, "damaged"},
                                            {DocumentFailure::Protected, "password"},
                                            {DocumentFailure::TimedOut, "too long"},
                                            {DocumentFailure::NoTool, "not installed"}}) {
        m_tools.pdf = std::unexpected(failure);
        const auto loaded = load(path);
        ASSERT_FALSE(loaded);
        EXPECT_TRUE(loaded.error().startsWith(path + ": ")) << qPrintable(loaded.error());
        EXPECT_TRUE(loaded.error().contains(reason)) << qPrintable(loaded.error());
    }
}

TEST_F(DocumentLoaderTest, SlidesGiveTheTextOfTheirXml) {
    m_tools.unpacked = "<p:sld\n a='b'><a:t>Silt</a:t><a:t> settles &amp; stays</a:t></p:sld>";
    EXPECT_EQ(textOf(put("a.pptx", "PK")), "Silt settles &amp; stays");
    EXPECT_EQ(m_tools.asked, QStringList("unpack ppt/slides/*.xml"));
}

TEST_F(DocumentLoaderTest, SlidesWithoutTextGoToTheConverter) {
    m_tools.unpacked = "<p:sld></p:sld>\n";
    m_tools.text = "converted";
    EXPECT_EQ(textOf(put("a.ppt", "PK")), "converted");
    EXPECT_EQ(m_tools.asked, QStringList({"unpack ppt/slides/*.xml", "text ppt"}));
}

TEST_F(DocumentLoaderTest, ADocumentThatGivesNothingTellsTheModelSo) {
    EXPECT_EQ(textOf(put("My plan.pptx", "broken")),
              "(Attached My plan.pptx; could not extract text. Export to PDF if needed.)");
    m_tools.text = "";
    EXPECT_EQ(textOf(put("a.odt", "broken")),
              "(Attached a.odt; could not extract text. Export to PDF if needed.)");
}

TEST_F(DocumentLoaderTest, ConvertedTextIsCutToo) {
    m_tools.text = QString(60001, u'x');
    EXPECT_EQ(textOf(put("a.docx", "PK")), QString(60000, u'x'));
}

TEST_F(DocumentLoaderTest, PagesAndKeynoteGiveTheirOwnPreview) {
    m_tools.unpacked = "%PDF";
    m_tools.pdf = PdfContents{"previewed", {}};
    EXPECT_EQ(textOf(put("a.pages", "PK")), "previewed");
    EXPECT_EQ(textOf(put("a.key", "PK")), "previewed");
    EXPECT_EQ(m_tools.asked,
              QStringList({"unpack *review.pdf", "pdf", "unpack *review.pdf", "pdf"}));
    m_tools.unpacked = QByteArray();
    m_tools.text = "converted";
    EXPECT_EQ(textOf(put("a.key", "PK")), "converted");
}

TEST_F(DocumentLoaderTest, RtfThatGivesNoTextGoesToTheConverter) {
    m_tools.rtf = "read";
    EXPECT_EQ(textOf(put("a.rtf", "{\\rtf1 read}")), "read");
    EXPECT_EQ(m_tools.asked, QStringList("rtf"));
    m_tools.text = "converted";
    m_tools.rtf = QString();
    EXPECT_EQ(textOf(put("b.rtf", "{\\rtf1}")), "converted");
    m_tools.rtf = std::unexpected(DocumentFailure::Unreadable);
    EXPECT_EQ(textOf(put("c.rtf", "PK, in truth")), "converted");
}

TEST_F(DocumentLoaderTest, AnOfficeDocumentBeyondItsLimitIsRefusedUnread) {
    for (const QString name : {"a.docx", "a.pptx", "a.rtf"}) {
        const auto loaded = load(putHuge(name, DocumentTools::officeLimit + 1));
        ASSERT_FALSE(loaded) << qPrintable(name);
        EXPECT_TRUE(loaded.error().endsWith(
            name + ": the document is too large; at most 256 MB can be attached."));
    }
    EXPECT_EQ(m_tools.asked, QStringList());
}

TEST_F(DocumentLoaderTest, WithoutRoomForACopyTheUserIsTold) {
    m_tools.text = std::unexpected(DocumentFailure::NoRoom);
    const auto loaded = load(put("a.docx", "PK"));
    ASSERT_FALSE(loaded);
    EXPECT_TRUE(loaded.error().endsWith("no room for a copy of it among the temporary files."));
}

TEST_F(DocumentLoaderTest, WhatIsStoppedGivesNothing) {
    m_tools.text = "converted";
    m_stop.request_stop();
    EXPECT_FALSE(load(put("a.docx", "PK")));
    EXPECT_EQ(m_tools.asked, QStringList());
}

TEST_F(DocumentLoaderTest, APictureThatIsInNoFileGoesTheSameWay) {
    const DocumentLoader loader(m_tools, PromptAttachment::Pipes::Refused, {});
    m_tools.jpeg = "\xFF\xD8\xFF";
    const auto picture = loader.loadPicture("\x89PNG", "Pasted image.png");
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->imageDataURL, "data:image/jpeg;base64,/9j/");
    EXPECT_EQ(picture->fileName, "Pasted image.png");
    m_tools.jpeg = std::unexpected(DocumentFailure::TooLarge);
    EXPECT_FALSE(loader.loadPicture("\x89PNG", "Pasted image.png"));
}

} // namespace
} // namespace vorq
