#pragma once

#include <QByteArrayView>
#include <QUrl>

/// The request by which a browser comes back to this computer, as the bytes that came. Pure
/// functions.
namespace vorq::LoopbackRequest {

inline constexpr quint16 port = 18742;
/// Bytes that are read of one request.
inline constexpr qsizetype longest = 65'536;

/// Whether the empty line has come that ends the head.
[[nodiscard]] bool isWhole(QByteArrayView request);

/// The address that was asked for; that of the callback without a query if the bytes name none.
[[nodiscard]] QUrl callbackURL(QByteArrayView request);

/// Whether a page made it that the user did not go to: by a script, a form, a frame or a picture,
/// or under a name that only seems to lead to this computer.
[[nodiscard]] bool isForeign(QByteArrayView request);

} // namespace vorq::LoopbackRequest
