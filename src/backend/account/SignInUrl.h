#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace vorq {

/// The URLs by which a sign-in in the browser comes back. Pure functions.
namespace SignInUrl {

/// The first value of that name, which may be empty: in the query, or else in the fragment read as
/// one. Nothing if there is none; a name without "=" has none.
[[nodiscard]] std::optional<QString> queryValue(const QString& name, const QUrl& url);

/// Whether a waiting attempt may be ended with this URL.
[[nodiscard]] bool isOAuthCallback(const QUrl& url);

/// The code that a vorq:// link hands over; nothing if it has none.
[[nodiscard]] std::optional<QString> handoffCode(const QUrl& url);

} // namespace SignInUrl
} // namespace vorq
