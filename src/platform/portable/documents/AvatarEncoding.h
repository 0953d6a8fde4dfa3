#pragma once

#include "platform/portable/documents/PictureEncoding.h"

#include <QByteArray>
#include <QSize>

#include <expected>

namespace vorq {

/// The longer side of a picture that stands for a user, in pixels at most.
inline constexpr int avatarSide = 512;

/// The size of a picture that stands for a user: no larger than it was, and neither side vanishes.
[[nodiscard]] QSize avatarSize(QSize picture);

/// A picture for a user, as JPEG: upright, on white, small. One that moves or is not whole is
/// refused.
[[nodiscard]] std::expected<QByteArray, PictureFault> avatarJpeg(QByteArray bytes);

} // namespace vorq
