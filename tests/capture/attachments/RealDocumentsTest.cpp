// Real files through the real tools.

#include "capture/attachments/DocumentLoader.h"
#include "doubles/documents/MadeDocuments.h"
#include "platform/linux/documents/LinuxDocumentTools.h"

#include <QColor>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QPainter>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

class RealDocumentsTest : public testing::Test {
  protected:
    AttachmentResult load(const QString& path) {
        return DocumentLoader(m_tools, PromptAttachment::Pipes::Refused, m_stop.get_token())
            .load(path);
    }
    QString textOf(const QString& path) {
        const auto loaded = load(path);
        return loaded ? loaded->textContent.value_or("no text") : "refused: " + loaded.error();
    }
    // The picture that would be sent; null if none would, or it is no JPEG.
    QImage sentPicture(const QString& path) {
        const auto loaded = load(path);
        EXPECT_TRUE(loaded) << qPrintable(loaded.error());
        return loaded ? decoded(loaded->imageDataURL.value_or(QString())) : QImage();
    }
    static QImage decoded(const QString& url) {
        const QString start = "data:image/jpeg;base64,";
        EXPECT_TRUE(url.startsWith(start)) << qPrintable(url.left(40));
        return QImage::fromData(QByteArray::fromBase64(url.mid(start.size()).toLatin1()));
    }
    // Runs the load and stops it after a while; how long it went on after that.
    std::chrono::milliseconds afterStop(const QString& path, std::chrono::milliseconds wait) {
        QElapsedTimer sinceStop;
        std::jthread stopper([&] {
            std::this_thread::sleep_for(wait);
            sinceStop.start();
            m_stop.request_stop();
        });
        EXPECT_FALSE(load(path));
        EXPECT_TRUE(m_stop.stop_requested()) << "it ended by itself";
        stopper.join();
        return std::chrono::milliseconds(sinceStop.elapsed());
    }

    static QImage plain(const QColor& color, QSize size = {40, 20}) {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(color);
        return image;
    }
    static bool isLike(QRgb pixel, const QColor& color) {
        return std::abs(qRed(pixel) - color.red()) < 12 &&
               std::abs(qGreen(pixel) - color.green()) < 12 &&
               std::abs(qBlue(pixel) - color.blue()) < 12;
    }

    QTemporaryDir m_folder;
    MadeDocuments m_made{m_folder.path()};
    LinuxDocumentTools::Programs m_programs{.helper = VORQ_DOCUMENTS_PROGRAM};
    LinuxDocumentTools m_tools{m_programs};
    std::stop_source m_stop;
};

TEST_F(RealDocumentsTest, EachKindOfPictureGoesAsJpeg) {
    for (const QString extension : {"png", "jpg", "JPEG", "webp", "tif", "tiff", "bmp"}) {
        const QString path = m_made.putImage("a." + extension, plain(Qt::blue));
        const QImage sent = sentPicture(path);
        ASSERT_EQ(sent.size(), QSize(40, 20)) << qPrintable(extension);
        EXPECT_TRUE(isLike(sent.pixel(20, 10), Qt::blue)) << qPrintable(extension);
    }
}

TEST_F(RealDocumentsTest, OfAMovingPictureTheFirstFrameGoes) {
    // Two frames of one pixel, red and blue.
    const QString path = m_made.put(
        "a.gif", QByteArray::fromHex("47494638396101000100900000ff00000000ff2c00000000010001000002"
                                     "0244010021f90400000000002c00000000010001000002024c01003b"));
    const QImage sent = sentPicture(path);
    ASSERT_FALSE(sent.isNull());
    EXPECT_TRUE(isLike(sent.pixel(0, 0), Qt::red));
}

TEST_F(RealDocumentsTest, APhotoOfAPhoneGoesIfItsDecoderIsInstalled) {
    const QString png = m_made.putImage("a.png", plain(Qt::blue, {64, 64}));
    const QString heic = m_folder.filePath("a.heic");
    MadeDocuments::runTool("heif-enc", {png, "-o", heic}); // package libheif-examples
    const QImage sent = sentPicture(heic);
    ASSERT_EQ(sent.size(), QSize(64, 64));
    EXPECT_TRUE(isLike(sent.pixel(20, 10), Qt::blue));

    m_programs.heif = "/nowhere/heif-convert";
    LinuxDocumentTools without(m_programs);
    const auto asItIs = DocumentLoader(without, PromptAttachment::Pipes::Refused, {}).load(heic);
    ASSERT_TRUE(asItIs);
    EXPECT_TRUE(asItIs->imageDataURL->startsWith("data:image/png;base64,"));
}

TEST_F(RealDocumentsTest, WhatIsTransparentIsWhite) {
    QImage image = plain(Qt::transparent);
    QPainter(&image).fillRect(0, 0, 10, 20, Qt::red);
    const QImage sent = sentPicture(m_made.putImage("a.png", image));
    EXPECT_TRUE(isLike(sent.pixel(30, 10), Qt::white));
    EXPECT_TRUE(isLike(sent.pixel(3, 10), Qt::red));
}

// As a camera writes that was held upright: rows from the right, in its EXIF data.
TEST_F(RealDocumentsTest, APhotoIsTurnedUpright) {
    QImage image = plain(Qt::white);
    QPainter(&image).fillRect(0, 0, 20, 20, Qt::red);
    QFile file(m_made.putImage("a.jpg", image, 95));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray jpeg = file.readAll();
    const QByteArray exif =
        QByteArray::fromHex("ffe10022457869660000"
                            "4d4d002a00000008000101120003000000010006000000000000");
    const QString turned = m_made.put("b.jpg", jpeg.first(2) + exif + jpeg.mid(2));
    const QImage sent = sentPicture(turned);
    ASSERT_EQ(sent.size(), QSize(20, 40));
    EXPECT_TRUE(isLike(sent.pixel(10, 5), Qt::red));
    EXPECT_TRUE(isLike(sent.pixel(10, 35), Qt::white));
}

TEST_F(RealDocumentsTest, WhereAPhotoWasTakenIsNotSent) {
    QImage image = plain(Qt::blue);
    image.setText("Description", "at home");
    QFile file(m_made.putImage("a.jpg", image));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ASSERT_TRUE(file.readAll().contains("at home"));
    const auto loaded = load(file.fileName());
    ASSERT_TRUE(loaded);
    EXPECT_FALSE(
        QByteArray::fromBase64(loaded->imageDataURL->mid(23).toLatin1()).contains("at home"));
}

TEST_F(RealDocumentsTest, APngThatIsLargerAsJpegGoesAsItIs) {
    // Noise of two colours: one bit a pixel as PNG.
    const QImage noise = MadeDocuments::noise({3200, 3200}).convertToFormat(QImage::Format_Mono);
    const QString path = m_made.putImage("a.png", noise);
    ASSERT_LT(QFile(path).size(), 3500000);
    const auto loaded = load(path);
    ASSERT_TRUE(loaded) << qPrintable(loaded.error());
    EXPECT_TRUE(loaded->imageDataURL->startsWith("data:image/png;base64,"));
}

TEST_F(RealDocumentsTest, APictureThatIsTooLargeBothWaysIsRefused) {
    const QString path = m_made.putImage("a.png", MadeDocuments::noise({3000, 3000}));
    EXPECT_THAT(load(path).error().toStdString(), testing::HasSubstr("too large"));
}

TEST_F(RealDocumentsTest, APictureOfTwoHundredMegapixelsIsRefused) {
    QImage image(20000, 10000, QImage::Format_Mono);
    image.fill(0);
    const QString path = m_made.putImage("a.png", image);
    ASSERT_LT(QFile(path).size(), 3500000);
    EXPECT_THAT(load(path).error().toStdString(), testing::HasSubstr("128 megapixels"));
}

TEST_F(RealDocumentsTest, APdfGivesTheTextOfItsPages) {
    EXPECT_EQ(textOf(m_made.putPdf("a.pdf", {"Silt settles.", "Levees hold."})),
              "Silt settles.\nLevees hold.");
}

TEST_F(RealDocumentsTest, APdfWithoutTextGivesItsFirstPage) {
    const auto loaded = load(m_made.putPdf("a.pdf", {"", ""}));
    ASSERT_TRUE(loaded) << qPrintable(loaded.error());
    EXPECT_EQ(loaded->textContent, u"(PDF has no extractable text — first page "
                                   "attached as an image for review.)"_s);
    const QImage page = decoded(*loaded->imageDataURL);
    // A4 in points, by one and a half.
    EXPECT_NEAR(page.width(), 595 * 1.5, 2);
    EXPECT_NEAR(page.height(), 842 * 1.5, 2);
    EXPECT_TRUE(isLike(page.pixel(page.width() / 2, page.height() / 2), Qt::white));
}

TEST_F(RealDocumentsTest, ALockedPdfIsRefusedWithTheReason) {
    const QString open = m_made.putPdf("open.pdf", {"secret"});
    const QString locked = m_folder.filePath("locked.pdf");
    MadeDocuments::runTool("qpdf", {"--encrypt", "user", "owner", "256", "--", open, locked});
    EXPECT_THAT(load(locked).error().toStdString(), testing::HasSubstr("password"));
}

TEST_F(RealDocumentsTest, AnEmptyOrDamagedPdfIsRefused) {
    EXPECT_THAT(load(m_made.put("empty.pdf", "")).error().toStdString(),
                testing::HasSubstr("damaged"));
    EXPECT_THAT(load(m_made.put("torn.pdf", "%PDF-1.4\n1 0 obj <<")).error().toStdString(),
                testing::HasSubstr("damaged"));
}

TEST_F(RealDocumentsTest, OfAPdfOfFiveThousandPagesOnlyTheBeginningIsRead) {
    QStringList lines;
    for (int page = 0; page < 5000; ++page)
        lines += QString("Page %1 tells of silt, levees, floods and fields.").arg(page);
    QElapsedTimer elapsed;
    const QString path = m_made.putPdf("a.pdf", lines);
    elapsed.start();
    const QString text = textOf(path);
    EXPECT_EQ(text.size(), 60000);
    EXPECT_TRUE(text.startsWith("Page 0 tells"));
}

TEST_F(RealDocumentsTest, APdfCanBeStoppedInTheMiddle) {
    const QString path = m_made.putPdf("a.pdf", QStringList(5000, QString()));
    EXPECT_LT(afterStop(path, 100ms), 2s);
}

TEST_F(RealDocumentsTest, OfficeDocumentsGiveTheirText) {
    for (const QString name : {"a.docx", "a.doc", "a.odt", "a.rtf", "a.odp", "a.pptx", "a.ppt"})
        EXPECT_EQ(textOf(m_made.putOffice(name, "Silt settles.")), "Silt settles.")
            << qPrintable(name);
}

TEST_F(RealDocumentsTest, ADamagedDocumentTellsTheModelSo) {
    EXPECT_EQ(textOf(m_made.put("a.pptx", QByteArray("PK\x03\x04 torn", 10))),
              "(Attached a.pptx; could not extract text. Export to PDF if needed.)");
}

TEST_F(RealDocumentsTest, PagesGivesThePreviewInItsPackage) {
    QFile preview(m_made.putPdf("preview.pdf", {"Previewed."}));
    ASSERT_TRUE(preview.open(QIODevice::ReadOnly));
    const QByteArray pdf = preview.readAll();
    EXPECT_EQ(textOf(m_made.putZip("a.pages", {{"QuickLook/Preview.pdf", pdf}})), "Previewed.");
    EXPECT_EQ(textOf(m_made.putZip("a.key", {{"preview.pdf", pdf}})), "Previewed.");
}

TEST_F(RealDocumentsTest, ABombIsUnpackedToItsLimit) {
    const QByteArray bomb = "<a>boom</a>" + QByteArray(300 << 20, ' ');
    const QString path = m_made.putZip("a.pptx", {{"ppt/slides/slide1.xml", bomb}});
    ASSERT_LT(QFile(path).size(), 1 << 20);
    EXPECT_EQ(textOf(path), "boom");
}

TEST_F(RealDocumentsTest, NoNameOfAFileIsTakenForMore) {
    const QList<std::pair<QString, QByteArray>> slide = {{"ppt/slides/s.xml", "<a>Silt</a>"}};
    for (const QString name : {"-x [a-z]*?.pptx", "$(touch x).pptx", "a'b\"c.pptx"}) {
        const QString plain = m_made.putZip("plain.pptx", slide);
        ASSERT_TRUE(QFile::rename(plain, m_folder.filePath(name)));
        EXPECT_EQ(textOf(m_folder.filePath(name)), "Silt") << qPrintable(name);
    }
}

// Its members lie outside of the folder, had anything unpacked them onto the disk.
TEST_F(RealDocumentsTest, NothingOfAPackageIsWrittenAnywhere) {
    const QTemporaryDir folder;
    const MadeDocuments inside(folder.path());
    inside.put("in/ppt/slides/s.xml", "<a>Silt</a>");
    inside.put("escaped.txt", "escaped");
    const QString path = m_folder.filePath("a.pptx");
    MadeDocuments::runTool("zip", {"-q", path, "ppt/slides/s.xml", "../escaped.txt"},
                           folder.filePath("in"));
    EXPECT_EQ(textOf(path), "Silt");
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("a.pptx"));
}

// Pictures of slides are drawn, and so would be fetched.
TEST_F(RealDocumentsTest, WhatADocumentLinksToIsNotFetched) {
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
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
xlink:href="http://127.0.0.1:%1/a.png" xlink:type="simple" xlink:show="embed"
xlink:actuate="onLoad"/></draw:frame></draw:page></office:presentation></office:body>
</office:document>)"_s.arg(server.serverPort());
    EXPECT_EQ(textOf(m_made.put("a.odp", document.toUtf8())), "stored");
    EXPECT_FALSE(server.waitForNewConnection(100));
}

class ConverterTest : public RealDocumentsTest {
  protected:
    // A converter that does what the script says.
    void convertBy(const QByteArray& script) {
        m_programs.office = m_made.put("soffice", "#!/bin/sh\n" + script);
        QFile::setPermissions(m_programs.office, QFile::ReadOwner | QFile::ExeOwner);
    }
    QString textBy(const QString& path) {
        LinuxDocumentTools tools(m_programs);
        const auto loaded =
            DocumentLoader(tools, PromptAttachment::Pipes::Refused, m_stop.get_token()).load(path);
        return loaded ? *loaded->textContent : "refused: " + loaded.error();
    }
    const QString m_nothing = "(Attached a.docx; could not extract text. Export to PDF if needed.)";
    QString m_document = m_made.put("a.docx", "PK");
};

TEST_F(ConverterTest, IsMissing) {
    m_programs.office = "/nowhere/soffice";
    EXPECT_EQ(textBy(m_document), m_nothing);
}

TEST_F(ConverterTest, Crashes) {
    convertBy("kill -SEGV $$\n");
    EXPECT_EQ(textBy(m_document), m_nothing);
}

TEST_F(ConverterTest, FailsWithoutSayingSo) {
    convertBy("exit 0\n");
    EXPECT_EQ(textBy(m_document), m_nothing);
}

TEST_F(ConverterTest, HangsAndIsKilledWithItsChildrenWhenStopped) {
    const QString mark = m_folder.filePath("pid");
    convertBy("sleep 600 &\necho $! > " + mark.toUtf8() + "\nwait\n");
    std::jthread stopper([&] {
        while (!QFile::exists(mark) || QFile(mark).size() == 0)
            std::this_thread::sleep_for(5ms);
        m_stop.request_stop();
    });
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_THAT(textBy(m_document).toStdString(), testing::HasSubstr("stopped"));
    EXPECT_LT(elapsed.elapsed(), 30'000);
    QFile file(mark);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray pid = file.readAll().trimmed();
    // Killed, it is gone or a zombie that nobody has waited for yet.
    const auto isGone = [&pid] {
        QFile status("/proc/" + pid + "/stat");
        return !status.open(QIODevice::ReadOnly) || status.readAll().contains(") Z ");
    };
    for (int wait = 0; wait < 1000 && !isGone(); ++wait)
        std::this_thread::sleep_for(5ms);
    EXPECT_TRUE(isGone());
}

TEST_F(ConverterTest, HasAProfileOfItsOwnWhereNoMacroRunsAndNoDisplay) {
    const QString seen = m_folder.filePath("seen");
    qputenv("DISPLAY", ":99");
    convertBy("{ echo \"home $HOME display $DISPLAY\"; cat \"$HOME\"/profile/user/*.xcu; } > " +
              seen.toUtf8() + "\n");
    EXPECT_EQ(textBy(m_document), m_nothing);
    qunsetenv("DISPLAY");
    QFile file(seen);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_FALSE(text.contains("home " + qgetenv("HOME") + " "));
    EXPECT_TRUE(text.contains("display \n"));
    EXPECT_TRUE(text.contains("DisableMacrosExecution"));
}

// Where the system lets a user have a network of its own.
TEST_F(ConverterTest, HasNoNetwork) {
    const QString seen = m_folder.filePath("seen");
    convertBy("tail -n +3 /proc/net/dev | cut -d: -f1 | tr -d ' ' > " + seen.toUtf8() + "\n");
    QProcess probe;
    probe.start("unshare", {"-rn", "true"});
    ASSERT_TRUE(probe.waitForFinished());
    EXPECT_EQ(textBy(m_document), m_nothing);
    QFile file(seen);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    if (probe.exitCode() == 0) EXPECT_EQ(file.readAll(), "lo\n");
}

} // namespace
} // namespace vorq
