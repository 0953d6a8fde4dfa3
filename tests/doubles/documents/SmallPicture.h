#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QImage>

namespace vorq {

/// A red PNG of 4 x 4 pixels, as another program puts it on the clipboard or drags it.
inline QByteArray smallPicture() {
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace vorq
