#include "desktop/WaylandCompositor.h"

#include "desktop/SwayCompositor.h"

namespace vorq::desktop {

WaylandCompositor::~WaylandCompositor() = default;

std::unique_ptr<WaylandCompositor> WaylandCompositor::start(SessionType, DesktopSession& session,
                                                            QSize screen) {
    return std::make_unique<SwayCompositor>(session, screen);
}

} // namespace vorq::desktop
