// Files that were made to do harm, through the real tools.

#include "doubles/documents/RealDocumentsFixture.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QTcpServer>
#include <QUrl>

#include <array>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

using HostileDocumentsTest = RealDocumentsFixture;

TEST_F(HostileDocumentsTest, ABombIsUnpackedToItsLimit) {
    const QByteArray bomb = "<a>boom</a>" + QByteArray(300 << 20, ' ') + "<a>late</a>";
    const QString path = m_made.putZip("a.pptx", {{"ppt/slides/slide1.xml", bomb}});
    ASSERT_LT(QFile(path).size(), 1 << 20);
    EXPECT_EQ(textOf(path), "boom");
}

TEST_F(HostileDocumentsTest, NoNameOfAFileIsTakenForMore) {
    const QList<std::pair<QString, QByteArray>> slide = {{"ppt/slides/s.xml", "<a>Silt</a>"}};
    for (const QString name : {"-x [a-z]*?.pptx", "$(touch x).pptx", "a'b\"c.pptx"}) {
        const QString plain = m_made.putZip("plain.pptx", slide);
        ASSERT_TRUE(QFile::rename(plain, m_folder.filePath(name)));
        EXPECT_EQ(textOf(m_folder.filePath(name)), "Silt") << qPrintable(name);
    }
}

// Its members lie outside of the folder, had anything unpacked them onto the disk.
TEST_F(HostileDocumentsTest, NothingOfAPackageIsWrittenAnywhere) {
    const QTemporaryDir folder;
    const MadeDocuments inside(folder.path());
    inside.put("in/ppt/slides/s.xml", "<a>Silt</a>");
    inside.put("escaped.xml", "<a>escaped</a>");
    const QString path = m_folder.filePath("a.pptx");
    MadeDocuments::runTool("zip",
                           {"-q", path, "ppt/slides/s.xml", "ppt/slides/../../../escaped.xml"},
                           folder.filePath("in"));
    ASSERT_TRUE(QDir(m_folder.path()).mkpath("work/here"));
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(m_folder.filePath("work/here")));
    EXPECT_EQ(textOf(path), "Silt escaped");
    QDir::setCurrent(before);
    QStringList files;
    for (QDirIterator all(m_folder.path(), QDir::Files | QDir::Hidden,
                          QDirIterator::Subdirectories);
         all.hasNext();)
        files += all.next();
    EXPECT_EQ(files, QStringList(path));
}

// It would take several gigabytes, and minutes.
TEST_F(HostileDocumentsTest, AnRtfOfFormatsAloneTakesNoMemoryOfOursAndCanBeStopped) {
    const QByteArray formats = QByteArrayLiteral("\\b a\\b0 b").repeated(6 << 20);
    const QString path = m_made.put("a.rtf", "{\\rtf1 " + formats + "}");
    const auto peak = [] {
        rusage usage{};
        ::getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss; // in KB
    };
    const long before = peak();
    EXPECT_LT(afterStop(path, 500ms), 2s);
    EXPECT_LT(peak() - before, 20'000);
}

// A slide with a picture that is elsewhere, and so would be fetched when the slide is drawn.
class LinkingDocumentsTest : public RealDocumentsFixture {
  protected:
    QString putSlideWith(const QUrl& picture) {
        const QString document = uR"(<?xml version="1.0" encoding="UTF-8"?><office:document
xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0"
xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0"
xmlns:xlink="http://www.w3.org/1999/xlink" office:version="1.2"
office:mimetype="application/vnd.oasis.opendocument.presentation"><office:body>
<office:presentation><draw:page draw:name="p"><draw:frame svg:width="20cm" svg:height="3cm"
svg:x="2cm" svg:y="2cm"><draw:text-box><text:p>stored</text:p></draw:text-box></draw:frame>
<draw:frame svg:width="2cm" svg:height="2cm" svg:x="2cm" svg:y="8cm"><draw:image
xlink:href="%1" xlink:type="simple" xlink:show="embed" xlink:actuate="onLoad"/></draw:frame>
</draw:page></office:presentation></office:body></office:document>)"_s.arg(picture.toString());
        return m_made.put("a.odp", document.toUtf8());
    }
};

TEST_F(LinkingDocumentsTest, NothingIsFetchedFromTheNetwork) {
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    const QUrl picture(u"http://127.0.0.1:%1/a.png"_s.arg(server.serverPort()));
    EXPECT_EQ(textOf(putSlideWith(picture)), "stored");
    EXPECT_FALSE(server.waitForNewConnection(100));
}

TEST_F(LinkingDocumentsTest, NoFileOfTheUserIsOpened) {
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QString picture = m_made.putImage("private.png", image);
    const QString document = putSlideWith(QUrl::fromLocalFile(picture));
    const int watch = ::inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    ASSERT_GE(::inotify_add_watch(watch, qPrintable(picture), IN_OPEN), 0);
    EXPECT_EQ(textOf(document), "stored");
    std::array<char, 1024> events{};
    EXPECT_EQ(::read(watch, events.data(), events.size()), -1) << "it was opened";
    ::close(watch);
}

} // namespace
} // namespace vorq
