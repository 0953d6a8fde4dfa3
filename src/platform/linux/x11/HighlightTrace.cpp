#include "platform/linux/x11/HighlightTrace.h"

namespace vorq {
namespace {

constexpr int clickReach = 6;                // pixels
constexpr std::uint32_t repeatWithin = 500;  // milliseconds
constexpr std::size_t mostRemembered = 1024; // processes

bool isNear(QPoint one, QPoint other) {
    return (one - other).manhattanLength() <= clickReach;
}

} // namespace

void HighlightTrace::windowCameToFront(Front front) {
    m_front = front;
    if (m_lastWindows.size() > mostRemembered) m_lastWindows.clear();
    m_lastWindows[front.process] = front.window;
}

void HighlightTrace::claimed(std::optional<ProcessId> owner) {
    m_owner = owner;
    m_origin = isOwnerInFront() ? m_front.window : 0;
    m_isClickedAway = false;
    if (m_press) m_press->hasSelected = true;
}

void HighlightTrace::pressed(QPoint at, std::uint32_t time) {
    const bool isRepeated =
        m_press && isNear(at, m_press->at) && time - m_press->time <= repeatWithin;
    m_press = {.at = at, .time = time, .isRepeated = isRepeated};
    // A second click selects a word, which an application that owns the selection may not claim
    // anew.
    if (isRepeated) m_isClickedAway = false;
}

void HighlightTrace::released(QPoint at, const std::optional<QRect>& contents) {
    if (!m_press || !isOwnerInFront() || !contents || !contents->contains(at)) return;
    const bool isClick = isNear(at, m_press->at) && !m_press->isRepeated;
    m_isClickedAway = isClick && !m_press->hasSelected;
}

bool HighlightTrace::isElsewhere(ProcessId process) const {
    if (m_owner != process || m_origin == 0) return false;
    const auto last = m_lastWindows.find(process);
    return last != m_lastWindows.end() && last->second != m_origin;
}

bool HighlightTrace::isClickedAway(ProcessId process) const {
    return m_owner == process && m_isClickedAway;
}

} // namespace vorq
