#pragma once

#include <QByteArray>
#include <QImage>

#include <cstdint>
#include <expected>

namespace vorq {

enum class PictureFault : std::uint8_t { Unreadable, TooManyPixels };

/// A picture of more pixels is not decoded.
inline constexpr qint64 pixelLimit = 128'000'000;

/// The first frame of an encoded picture, turned upright, on white.
[[nodiscard]] std::expected<QImage, PictureFault> decodePicture(QByteArray bytes);

/// The picture on white as JPEG of quality 72, without what else was stored along with it; empty if
/// it cannot be encoded.
[[nodiscard]] QByteArray encodeJpeg(const QImage& picture);

} // namespace vorq
