#include "platform/linux/atspi/AtSpiFocusOrder.h"

#include <algorithm>
#include <ranges>

namespace vorq {
namespace {

// An application that never tells of a loss must not fill the memory.
constexpr std::ptrdiff_t mostOfOneService = 32;

} // namespace

void AtSpiFocusOrder::gained(const AtSpiRef& element) {
    if (element.isNull()) return;
    std::erase_if(m_entries, [&](const Entry& entry) { return entry.element == element; });
    m_entries.push_back({.element = element});
    dropReplaced(element.service);
}

void AtSpiFocusOrder::lost(const AtSpiRef& element) {
    const auto entry = std::ranges::find(m_entries, element, &Entry::element);
    if (entry == m_entries.end()) return;
    entry->isLost = true;
    dropReplaced(element.service);
}

void AtSpiFocusOrder::forget(const QString& service) {
    std::erase_if(m_entries, [&](const Entry& entry) { return entry.element.service == service; });
}

void AtSpiFocusOrder::dropReplaced(const QString& service) {
    const auto isOfService = [&](const Entry& entry) { return entry.element.service == service; };
    bool hasSuccessor = false;
    std::vector<Entry> kept;
    for (const Entry& entry : m_entries | std::views::reverse) {
        const bool isReplaced = isOfService(entry) && entry.isLost && hasSuccessor;
        if (!isReplaced) kept.push_back(entry);
        hasSuccessor = hasSuccessor || (isOfService(entry) && !entry.isLost);
    }
    std::ranges::reverse(kept);
    m_entries = std::move(kept);
    if (std::ranges::count_if(m_entries, isOfService) > mostOfOneService)
        m_entries.erase(std::ranges::find_if(m_entries, isOfService));
}

std::vector<AtSpiRef> AtSpiFocusOrder::candidates(const QString& service) const {
    std::vector<AtSpiRef> found;
    for (const Entry& entry : m_entries | std::views::reverse)
        if (entry.element.service == service) found.push_back(entry.element);
    return found;
}

std::vector<QString> AtSpiFocusOrder::services() const {
    std::vector<QString> found;
    for (const Entry& entry : m_entries | std::views::reverse)
        if (std::ranges::find(found, entry.element.service) == found.end())
            found.push_back(entry.element.service);
    return found;
}

} // namespace vorq
