#include "platform/portable/documents/AvatarEncoding.h"

#include <QBuffer>
#include <QImageReader>
#include <QtEndian>

#include <algorithm>

namespace vorq {
namespace {

constexpr uchar markerSign = 0xFF;
constexpr uchar endOfPicture = 0xD9;
constexpr uchar startOfPicture = 0xD8;

uchar byteAt(QByteArrayView bytes, qsizetype index) {
    return static_cast<uchar>(bytes[index]);
}

bool isWithoutLength(uchar marker) {
    constexpr uchar firstRestart = 0xD0;
    return marker == 0x00 || marker == 0x01 || (marker >= firstRestart && marker <= startOfPicture);
}

// A JPEG that ends too early is decoded all the same, with grey for what is missing. What stands in
// a segment, such as a thumbnail, has an end of its own.
bool hasEnd(QByteArrayView jpeg) {
    qsizetype at = 0;
    while (at + 1 < jpeg.size()) {
        const uchar marker = byteAt(jpeg, at + 1);
        if (byteAt(jpeg, at) != markerSign || marker == markerSign) {
            ++at;
        } else if (marker == endOfPicture) {
            return true;
        } else if (isWithoutLength(marker)) {
            at += 2;
        } else if (at + 3 < jpeg.size()) {
            at += 2 + (byteAt(jpeg, at + 2) << 8 | byteAt(jpeg, at + 3));
        } else {
            return false;
        }
    }
    return false;
}

// The file says how long it is.
bool holdsItsLength(QByteArrayView bitmap) {
    constexpr qsizetype lengthAt = 2;
    if (bitmap.size() < lengthAt + 4) return false;
    return qFromLittleEndian<quint32>(bitmap.data() + lengthAt) <= bitmap.size();
}

bool hasTrailer(QByteArrayView gif) {
    while (gif.endsWith('\0'))
        gif.chop(1);
    return gif.endsWith(';');
}

// Of these kinds what is missing at the end is decoded as if it were plain.
bool isCutOff(QByteArrayView bytes) {
    if (bytes.startsWith("\xFF\xD8")) return !hasEnd(bytes);
    if (bytes.startsWith("BM")) return !holdsItsLength(bytes);
    return bytes.startsWith("GIF8") && !hasTrailer(bytes);
}

} // namespace

QSize avatarSize(QSize picture) {
    const int longer = std::max(picture.width(), picture.height());
    if (longer <= avatarSide) return picture;
    const auto shrunk = [longer](int side) {
        return std::max(1, static_cast<int>((qint64{side} * avatarSide + longer / 2) / longer));
    };
    return {shrunk(picture.width()), shrunk(picture.height())};
}

std::expected<QByteArray, PictureFault> avatarJpeg(QByteArray bytes) {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    if (const auto fault = preparePicture(reader)) return std::unexpected(*fault);
    if (isCutOff(bytes)) return std::unexpected(PictureFault::Unreadable);
    if (reader.supportsAnimation() && reader.imageCount() > 1)
        return std::unexpected(PictureFault::Animated);
    if (const QSize size = reader.size(); size.isValid()) reader.setScaledSize(avatarSize(size));
    QImage picture = reader.read();
    if (picture.isNull()) return std::unexpected(PictureFault::Unreadable);
    // Of a kind that does not tell its size beforehand.
    if (const QSize size = avatarSize(picture.size()); size != picture.size())
        picture = picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QByteArray jpeg = encodeJpeg(picture);
    if (jpeg.isEmpty()) return std::unexpected(PictureFault::Unreadable);
    return jpeg;
}

} // namespace vorq
