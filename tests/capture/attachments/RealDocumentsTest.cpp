// Real files through the real tools.

#include "doubles/documents/RealDocumentsFixture.h"

#include <QColor>
#include <QFile>
#include <QPainter>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

class RealDocumentsTest : public RealDocumentsFixture {
  protected:
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

TEST_F(RealDocumentsTest, OfAPdfOfFiveThousandPagesTheBeginningGoes) {
    QStringList lines;
    for (int page = 0; page < 5000; ++page)
        lines += QString("Page %1 tells of silt, levees, floods and fields.").arg(page);
    const QString text = textOf(m_made.putPdf("a.pdf", lines));
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

} // namespace
} // namespace vorq
