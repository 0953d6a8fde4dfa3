#include "doubles/wayland/WaylandCompositor.h"

#include "doubles/wayland/GnomeCompositor.h"
#include "doubles/wayland/KWinCompositor.h"
#include "doubles/wayland/SwayCompositor.h"

namespace vorq::desktop {

WaylandCompositor::~WaylandCompositor() = default;

std::unique_ptr<WaylandCompositor> WaylandCompositor::start(SessionType type,
                                                            DesktopSession& session, QSize screen) {
    if (type == SessionType::Gnome) return std::make_unique<GnomeCompositor>(session, screen);
    if (type == SessionType::KWin) return std::make_unique<KWinCompositor>(session, screen);
    return std::make_unique<SwayCompositor>(session, screen);
}

} // namespace vorq::desktop
