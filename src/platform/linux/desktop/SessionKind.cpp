#include "platform/linux/desktop/SessionKind.h"

namespace vorq {

SessionKind sessionKind(const QProcessEnvironment& environment) {
    const bool isWayland = !environment.value(QStringLiteral("WAYLAND_DISPLAY")).isEmpty() ||
                           environment.value(QStringLiteral("XDG_SESSION_TYPE")) == u"wayland";
    return isWayland ? SessionKind::Wayland : SessionKind::X11;
}

bool prefersXServer(const QProcessEnvironment& environment, bool hasXServer) {
    return hasXServer && sessionKind(environment) == SessionKind::Wayland &&
           environment.value(QStringLiteral("QT_QPA_PLATFORM")).isEmpty();
}

} // namespace vorq
