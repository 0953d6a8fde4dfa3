#include "ui/settings/AvatarPainter.h"

#include <QPainter>

#include <gtest/gtest.h>

namespace vorq {
namespace {

// What it makes of a picture on a square of 96 pixels.
QImage avatarOf(const QImage& image) {
    AvatarPicture picture;
    picture.show(image);
    AvatarPainter item;
    item.setSize({96, 96});
    item.setPicture(&picture);
    QImage canvas(96, 96, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    item.paint(&painter);
    return canvas;
}

TEST(AvatarPainter, ShowsTheMiddleOfAPictureAsACircle) {
    QImage image(300, 100, QImage::Format_RGB32);
    image.fill(Qt::red);
    QPainter(&image).fillRect(100, 0, 100, 100, Qt::blue);
    const QImage shown = avatarOf(image);
    EXPECT_EQ(shown.pixelColor(48, 48), QColor(Qt::blue));
    EXPECT_EQ(shown.pixelColor(4, 48), QColor(Qt::blue));
    EXPECT_EQ(shown.pixelColor(2, 2).alpha(), 0);
}

// Scaled as a whole to that height it would be wider than any picture can be.
TEST(AvatarPainter, ShowsTheMiddleOfAVeryThinPicture) {
    QImage image(6'000'000, 1, QImage::Format_Grayscale8);
    image.fill(255);
    EXPECT_EQ(avatarOf(image).pixelColor(48, 48), QColor(Qt::white));
}

} // namespace
} // namespace vorq
