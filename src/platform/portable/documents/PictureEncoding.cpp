#include "platform/portable/documents/PictureEncoding.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>

#include <algorithm>
#include <array>

namespace vorq {
namespace {

constexpr int jpegQuality = 72;

// For one picture, in megabytes: the pixels at most, in eight bytes each.
constexpr int allocationLimit = 1024;

// Other formats hold programs rather than pictures, or refer to other files.
constexpr std::array<QByteArrayView, 8> formats = {"png",  "jpeg", "jpg", "webp",
                                                   "tiff", "tif",  "gif", "bmp"};

QImage onWhite(const QImage& picture) {
    if (!picture.hasAlphaChannel())
        return picture.format() == QImage::Format_Grayscale8
                   ? picture
                   : picture.convertToFormat(QImage::Format_RGB32);
    QImage flat(picture.size(), QImage::Format_RGB32);
    if (flat.isNull()) return {};
    flat.fill(Qt::white);
    QPainter painter(&flat);
    // In its own pixels, whatever density it claims to have.
    painter.drawImage(flat.rect(), picture, picture.rect());
    painter.end();
    flat.setColorSpace(picture.colorSpace());
    return flat;
}

// The same pixels without the texts that came with them, such as where a photo was taken.
QImage withoutTexts(const QImage& picture) {
    QImage bare(picture.constBits(), picture.width(), picture.height(), picture.bytesPerLine(),
                picture.format());
    bare.setColorSpace(picture.colorSpace());
    return bare;
}

} // namespace

std::optional<PictureFault> preparePicture(QImageReader& reader) {
    QImageReader::setAllocationLimit(allocationLimit);
    reader.setAutoTransform(true);
    if (std::ranges::find(formats, reader.format()) == formats.end())
        return PictureFault::Unreadable;
    const QSize size = reader.size();
    if (qint64{size.width()} * size.height() > pixelLimit) return PictureFault::TooManyPixels;
    return std::nullopt;
}

std::expected<QImage, PictureFault> decodePicture(QByteArray bytes) {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    if (const auto fault = preparePicture(reader)) return std::unexpected(*fault);
    const QImage picture = onWhite(reader.read());
    if (picture.isNull()) return std::unexpected(PictureFault::Unreadable);
    return picture;
}

QByteArray encodeJpeg(const QImage& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "JPEG");
    writer.setQuality(jpegQuality);
    const QImage flat = onWhite(picture);
    return writer.write(withoutTexts(flat)) ? bytes : QByteArray();
}

} // namespace vorq
