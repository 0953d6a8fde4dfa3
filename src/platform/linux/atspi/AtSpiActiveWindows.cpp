#include "platform/linux/atspi/AtSpiActiveWindows.h"

#include <algorithm>

namespace vorq {

// A window that tells of it again is no later than it was.
void AtSpiActiveWindows::activated(const AtSpiRef& window, ProcessId process) {
    if (window.isNull()) return;
    const auto known = std::ranges::find(m_entries, window, &Entry::window);
    if (known == m_entries.end()) m_entries.push_back({.window = window, .process = process});
}

void AtSpiActiveWindows::deactivated(const AtSpiRef& window) {
    std::erase_if(m_entries, [&](const Entry& entry) { return entry.window == window; });
}

void AtSpiActiveWindows::forget(const QString& service) {
    std::erase_if(m_entries, [&](const Entry& entry) { return entry.window.service == service; });
}

bool AtSpiActiveWindows::hasWindowOf(const QString& service) const {
    return std::ranges::any_of(m_entries,
                               [&](const Entry& entry) { return entry.window.service == service; });
}

std::optional<ProcessId> AtSpiActiveWindows::front() const {
    return m_entries.empty() ? std::nullopt : std::optional(m_entries.back().process);
}

} // namespace vorq
