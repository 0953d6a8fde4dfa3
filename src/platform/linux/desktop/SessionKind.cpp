#include "platform/linux/desktop/SessionKind.h"

namespace vorq {

SessionKind sessionKind(const QProcessEnvironment& environment) {
    const QString type = environment.value(QStringLiteral("XDG_SESSION_TYPE"));
    const auto names = [&](const char* display) {
        return !environment.value(QLatin1StringView(display)).isEmpty();
    };
    if (names("WAYLAND_DISPLAY") || type == u"wayland") return SessionKind::Wayland;
    return names("DISPLAY") || type == u"x11" ? SessionKind::X11 : SessionKind::None;
}

bool prefersXServer(const QProcessEnvironment& environment, bool hasXServer) {
    return hasXServer && sessionKind(environment) == SessionKind::Wayland &&
           environment.value(QStringLiteral("QT_QPA_PLATFORM")).isEmpty();
}

} // namespace vorq
