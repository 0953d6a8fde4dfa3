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

TEST(StatusGlyphs, WhatIsToBeLookedAtIsTheMarkOnADiscOfTheOtherColour) {
    EXPECT_EQ(colorAt(StatusImage::Attention, {9, 2.5}), QColor("#E5631A"));
    EXPECT_EQ(colorAt(StatusImage::Attention, {6, 6}), QColor(Qt::white));
    EXPECT_EQ(colorAt(StatusImage::Attention, {0.5, 0.5}).alpha(), 0);
}

TEST(StatusGlyphs, TheMarkStaysWholeHoweverLowItIs) {
    constexpr int size = 128;
    const auto inked = [](double drop) {
        const QImage drawn = statusIcon(StatusImage::Glyph, drop).pixmap(size, size).toImage();
        QRect place;
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x)
                if (drawn.pixelColor(x, y).alpha() > 0) place |= QRect(x, y, 1, 1);
        return place;
    };
    const QRect rest = inked(0);
    const QRect low = inked(1);
    EXPECT_GT(low.top(), rest.top() + size / 5);
    EXPECT_LT(low.bottom(), size - 1);
    EXPECT_NEAR(low.center().x(), rest.center().x(), 2);
    EXPECT_LT(inked(0.5).top(), low.top());
}

} // namespace
} // namespace vorq
