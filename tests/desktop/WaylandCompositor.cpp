#include "desktop/WaylandCompositor.h"

#include "desktop/GnomeCompositor.h"
#include "desktop/KWinCompositor.h"
#include "desktop/SwayCompositor.h"

namespace vorq::desktop {

WaylandCompositor::~WaylandCompositor() = default;

std::unique_ptr<WaylandCompositor> WaylandCompositor::start(SessionType type,
                                                            DesktopSession& session, QSize screen) {
    if (type == SessionType::Gnome) return std::make_unique<GnomeCompositor>(session, screen);
    if (type == SessionType::KWin) return std::make_unique<KWinCompositor>(session, screen);
    return std::make_unique<SwayCompositor>(session, screen);
}

} // namespace vorq::desktop
