// Pictures of users by the real helper.

#include "doubles/documents/RealDocumentsFixture.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace vorq {
namespace {

class RealAvatarsTest : public RealDocumentsFixture {
  protected:
    [[nodiscard]] auto avatar(const QString& path) {
        return m_tools.avatarOf({path, {}}, m_stop.get_token());
    }
    [[nodiscard]] QSize sizeOf(const QString& path) {
        const auto jpeg = avatar(path);
        EXPECT_TRUE(jpeg) << qPrintable(path);
        return jpeg ? QImage::fromData(*jpeg, "JPEG").size() : QSize();
    }
    static QImage plain(QSize size) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        return image;
    }
    [[nodiscard]] static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    void expectRefused(const QString& path, DocumentFailure failure) {
        const auto jpeg = avatar(path);
        ASSERT_FALSE(jpeg) << qPrintable(path);
        EXPECT_EQ(jpeg.error(), failure) << qPrintable(path);
    }
};

TEST_F(RealAvatarsTest, TheLongerSideHas512PixelsAtMost) {
    EXPECT_EQ(sizeOf(m_made.putImage("wide.png", plain({2048, 1024}))), QSize(512, 256));
    EXPECT_EQ(sizeOf(m_made.putImage("high.jpg", plain({1000, 3000}))), QSize(171, 512));
    EXPECT_EQ(sizeOf(m_made.putImage("strip.png", plain({4000, 2}))), QSize(512, 1));
    EXPECT_EQ(sizeOf(m_made.putImage("small.bmp", plain({30, 20}))), QSize(30, 20));
}

TEST_F(RealAvatarsTest, EachKindOfPictureIsTaken) {
    for (const QString extension : {"png", "jpg", "webp", "tif", "bmp"})
        EXPECT_EQ(sizeOf(m_made.putImage("a." + extension, plain({640, 640}))), QSize(512, 512))
            << qPrintable(extension);
}

TEST_F(RealAvatarsTest, AFileThatLiesAboutItsKindIsTakenForWhatItIs) {
    const QByteArray png = bytesOf(m_made.putImage("a.png", plain({20, 20})));
    EXPECT_EQ(sizeOf(m_made.put("really-a-png.jpg", png)), QSize(20, 20));
    expectRefused(m_made.put("text.jpg", "This is no picture."), DocumentFailure::Unreadable);
    expectRefused(m_made.put("empty.jpg", ""), DocumentFailure::Unreadable);
    expectRefused(m_made.put("drawing.png", "<svg xmlns='http://www.w3.org/2000/svg'/>"),
                  DocumentFailure::Unreadable);
}

TEST_F(RealAvatarsTest, APictureOfTooManyPixelsIsNotDecoded) {
    QImage huge(20000, 10000, QImage::Format_Mono);
    huge.fill(0);
    const QString path = m_made.putImage("huge.png", huge);
    huge = {};
    expectRefused(path, DocumentFailure::TooLarge);
}

TEST_F(RealAvatarsTest, APictureThatIsNotWholeIsRefused) {
    const QImage noise = MadeDocuments::noise({300, 300});
    for (const QString extension : {"png", "jpg", "webp", "bmp", "tif"}) {
        const QByteArray whole = bytesOf(m_made.putImage("whole." + extension, noise));
        for (const int share : {20, 60, 95})
            expectRefused(m_made.put("part." + extension, whole.first(whole.size() * share / 100)),
                          DocumentFailure::Unreadable);
    }
}

TEST_F(RealAvatarsTest, APictureThatMovesIsRefused) {
    // Two frames of one pixel, red and blue.
    const QByteArray moving =
        QByteArray::fromHex("47494638396101000100900000ff00000000ff2c00000000010001000002"
                            "0244010021f90400000000002c00000000010001000002024c01003b");
    expectRefused(m_made.put("moving.gif", moving), DocumentFailure::Animated);
    const QByteArray still =
        QByteArray::fromHex("47494638396101000100900000ff00000000ff2c000000000100010000020244"
                            "01003b");
    EXPECT_EQ(sizeOf(m_made.put("still.gif", still)), QSize(1, 1));
}

TEST_F(RealAvatarsTest, WhatIsStoredIsReadTheSameWay) {
    const QByteArray stored = bytesOf(m_made.putImage("stored.jpg", plain({512, 512})));
    const auto again = m_tools.avatarOf({{}, stored}, m_stop.get_token());
    ASSERT_TRUE(again);
    EXPECT_EQ(QImage::fromData(*again).size(), QSize(512, 512));
    EXPECT_FALSE(m_tools.avatarOf({{}, "no picture"}, m_stop.get_token()));
}

} // namespace
} // namespace vorq
