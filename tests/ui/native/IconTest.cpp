#include "ui/native/IconPainter.h"

#include <QDir>
#include <QImage>
#include <QPainter>

#include <gmock/gmock.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr double iconSize = 24;

class IconTest : public testing::TestWithParam<double> {
  protected:
    // The icon at a scale of the screen.
    static QImage drawn(const QString& name, const QColor& color, double scale) {
        IconPainter icon;
        icon.setSize({iconSize, iconSize});
        icon.setProperty("name", name);
        icon.setProperty("color", color);
        const int pixels = qRound(iconSize * scale);
        QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.scale(scale, scale);
        icon.paint(&painter);
        return image.convertToFormat(QImage::Format_ARGB32);
    }
    static int countOf(const QImage& image, const std::function<bool(QRgb)>& matches) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (matches(image.pixel(x, y))) ++count;
        return count;
    }
};

QStringList allIcons() {
    QStringList names = QDir(u":/qt/qml/Vorq/Native/icons"_s).entryList({u"*.svg"_s});
    names.replaceInStrings(u".svg"_s, QString());
    names.removeAll(u"mark"_s); // has colours of its own
    return names;
}

TEST_P(IconTest, EachTakesOnItsColourAndIsCrisp) {
    ASSERT_GT(allIcons().size(), 90);
    for (const QString& name : allIcons()) {
        const QImage image = drawn(name, Qt::red, GetParam());
        EXPECT_GT(countOf(image, [](QRgb pixel) { return qAlpha(pixel) > 200; }), 0)
            << name.toStdString() << " is blurred";
        EXPECT_EQ(countOf(image,
                          [](QRgb pixel) {
                              return qAlpha(pixel) > 40 && (qRed(pixel) < 250 || qGreen(pixel) > 5);
                          }),
                  0)
            << name.toStdString() << " has another colour";
    }
}

TEST_P(IconTest, WhatIsCutOutShowsTheGround) {
    const QImage image = drawn("checkCircleFill", Qt::red, GetParam());
    const auto alphaAt = [&](double x, double y) {
        return qAlpha(
            image.pixel(static_cast<int>(x * GetParam()), static_cast<int>(y * GetParam())));
    };
    EXPECT_LT(alphaAt(10.8, 15.0), 60) << "the corner of the check mark";
    EXPECT_EQ(alphaAt(12, 5), 255) << "the disc";
}

TEST_P(IconTest, ATranslucentColourIsEvenWhereStrokesCross) {
    const QImage image = drawn("close", QColor(255, 0, 0, 100), GetParam());
    EXPECT_EQ(countOf(image, [](QRgb pixel) { return qAlpha(pixel) > 101; }), 0);
}

TEST_P(IconTest, AnUnknownNameIsASquare) {
    EXPECT_EQ(drawn("no such icon", Qt::red, GetParam()), drawn("square", Qt::red, GetParam()));
    EXPECT_NE(drawn("circle", Qt::red, GetParam()), drawn("square", Qt::red, GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Scales, IconTest, testing::Values(1.0, 1.25, 2.0));

} // namespace
} // namespace vorq
