#pragma once

#include <QByteArray>
#include <QImage>

#include <cstdint>
#include <expected>
#include <optional>

class QImageReader;

namespace vorq {

enum class PictureFault : std::uint8_t { Unreadable, TooManyPixels, Animated };

/// A picture of more pixels is not decoded.
inline constexpr qint64 pixelLimit = 128'000'000;

/// Sets the reader up for a picture that nobody vouches for. Gives why it is not to be decoded, or
/// nothing.
[[nodiscard]] std::optional<PictureFault> preparePicture(QImageReader& reader);

/// The first frame of an encoded picture, turned upright, on white.
[[nodiscard]] std::expected<QImage, PictureFault> decodePicture(QByteArray bytes);

/// The picture on white as JPEG of quality 72, without what else was stored along with it; empty if
/// it cannot be encoded.
[[nodiscard]] QByteArray encodeJpeg(const QImage& picture);

} // namespace vorq
