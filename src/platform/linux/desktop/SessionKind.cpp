#include "platform/linux/desktop/SessionKind.h"

using namespace Qt::StringLiterals;

namespace vorq {

SessionKind sessionKind(const QProcessEnvironment& environment) {
    const QString type = environment.value(u"XDG_SESSION_TYPE"_s);
    const auto names = [&](const char* display) {
        return !environment.value(QLatin1StringView(display)).isEmpty();
    };
    if (names("WAYLAND_DISPLAY") || type == u"wayland") return SessionKind::Wayland;
    return names("DISPLAY") || type == u"x11" ? SessionKind::X11 : SessionKind::None;
}

bool prefersXServer(const QProcessEnvironment& environment, bool hasXServer) {
    return hasXServer && sessionKind(environment) == SessionKind::Wayland &&
           environment.value(u"QT_QPA_PLATFORM"_s).isEmpty();
}

} // namespace vorq
