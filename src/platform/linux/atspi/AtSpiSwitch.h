#pragma once

#include <QString>

#include <expected>

class QDBusConnection;

namespace vorq {

/// Tells toolkits to show their windows on the accessibility bus, for this session and later ones,
/// and waits until that is done, for some seconds at most. For a program that does nothing else;
/// the user has agreed. The error is a sentence for the user.
[[nodiscard]] std::expected<void, QString> switchAccessibilityOn(const QDBusConnection& session);

} // namespace vorq
