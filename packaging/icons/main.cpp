// vorq-icon-files DRAWING.svg FOLDER SIZE...
// Draws an icon in each size, in pixels, where desktops look for it, which is
// FOLDER/SIZExSIZE/apps/NAME.png. Some panels and menus show no SVG.

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

bool write(QSvgRenderer& drawing, const QString& path, int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    return QDir().mkpath(QFileInfo(path).path()) && image.save(path);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QSvgRenderer drawing(arguments.value(1));
    if (!drawing.isValid() || arguments.size() < 4) {
        std::fputs("Usage: vorq-icon-files DRAWING.svg FOLDER SIZE...\n", stderr);
        return 2;
    }
    const QString name = QFileInfo(arguments.at(1)).completeBaseName();
    for (const QString& size : arguments.mid(3)) {
        const QString path = u"%1/%2x%2/apps/%3.png"_s.arg(arguments.at(2), size, name);
        if (write(drawing, path, size.toInt())) continue;
        std::fprintf(stderr, "vorq-icon-files: cannot write %s\n", qPrintable(path));
        return 1;
    }
    return 0;
}
