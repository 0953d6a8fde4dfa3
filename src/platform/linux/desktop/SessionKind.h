#pragma once

#include <QProcessEnvironment>

#include <cstdint>

namespace vorq {

/// What shows the windows of the user's session.
enum class SessionKind : std::uint8_t { None, X11, Wayland };

/// By what the session tells its programs in their environment.
[[nodiscard]] SessionKind
sessionKind(const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

/// Whether to show windows over the X server that a Wayland session has for older programs. There
/// the panel keeps its place above others, which Wayland itself grants to no ordinary window. What
/// the user chose by QT_QPA_PLATFORM comes first.
[[nodiscard]] bool prefersXServer(const QProcessEnvironment& environment, bool hasXServer);

} // namespace vorq
