#include <QImage>
#include <QPainter>
#include <QSet>
#include <QSvgRenderer>

#include <gmock/gmock.h>

namespace {

QSet<QRgb> colorsOf(const QString& icon) {
    QSvgRenderer renderer(QStringLiteral(VORQ_ICONS_FOLDER "/") + icon);
    EXPECT_TRUE(renderer.isValid()) << qUtf8Printable(icon);
    QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y));
    return colors;
}

// An icon that cannot be drawn leaves the picture transparent, which is one colour.
TEST(PackagedIcons, ShowSomethingInEachForm) {
    for (const char* icon : {"com.vorq.desk.svg", "com.vorq.desk-symbolic.svg"})
        EXPECT_GT(colorsOf(QString::fromLatin1(icon)).size(), 1) << icon;
}

} // namespace
