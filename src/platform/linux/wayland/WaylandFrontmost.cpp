#include "platform/linux/wayland/WaylandFrontmost.h"

#include <utility>

namespace vorq {

WaylandFrontmost::WaylandFrontmost(Clock& clock, ProcessId own, QObject* parent)
    : QObject(parent), m_clock(clock), m_own(own) {}

WaylandFrontmost::~WaylandFrontmost() {
    if (m_handover) m_clock.cancel(*m_handover);
}

void WaylandFrontmost::setVorqActive(bool isActive) {
    m_isVorqActive = isActive;
    look();
}

void WaylandFrontmost::setForeign(std::optional<ProcessId> process) {
    m_foreign = process;
    look();
}

// An application that has just lost the keyboard to Vorq may tell of that later.
std::optional<ProcessId> WaylandFrontmost::process() const {
    return m_isVorqActive ? std::optional(m_own) : m_foreign;
}

void WaylandFrontmost::look() {
    const std::optional<ProcessId> now = process();
    if (now == std::exchange(m_last, now)) return;
    if (const auto timer = std::exchange(m_handover, std::nullopt)) m_clock.cancel(*timer);
    if (now) {
        emit changed(*now);
        return;
    }
    m_handover = m_clock.after(handover, [this] {
        m_handover.reset();
        emit lost();
    });
}

} // namespace vorq
