#include "shell/look/StatusGlyphs.h"

#include <QColor>
#include <QImage>
#include <QPixmap>

#include <gmock/gmock.h>

namespace vorq {
namespace {

QColor colorAt(StatusImage image, QPointF place) {
    constexpr int size = 128;
    const QImage drawn = statusIcon(image).pixmap(size, size).toImage();
    return drawn.pixelColor((place * size / 18).toPoint());
}

TEST(StatusGlyphs, TheMarkHasTwoBladesOnNothing) {
    EXPECT_EQ(colorAt(StatusImage::Glyph, {4, 4}), QColor("#5B78FB"));
    EXPECT_EQ(colorAt(StatusImage::Glyph, {14, 5}), QColor("#E5631A"));
    EXPECT_EQ(colorAt(StatusImage::Glyph, {9, 4}).alpha(), 0);
    EXPECT_EQ(colorAt(StatusImage::Glyph, {2, 15}).alpha(), 0);
}

TEST(StatusGlyphs, CheckAndFailAreSignsOnDiscs) {
    EXPECT_EQ(colorAt(StatusImage::Check, {9, 15}), QColor("#27935A"));
    EXPECT_EQ(colorAt(StatusImage::Check, {8, 12}), QColor(Qt::white));
    EXPECT_EQ(colorAt(StatusImage::Fail, {9, 15}), QColor("#D4423A"));
    EXPECT_EQ(colorAt(StatusImage::Fail, {9, 9}), QColor(Qt::white));
    EXPECT_EQ(colorAt(StatusImage::Fail, {0.5, 0.5}).alpha(), 0);
}

} // namespace
} // namespace vorq
