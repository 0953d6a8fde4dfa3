#include "engine/embedded/words/KeyTable.h"

#include <functional>

namespace vorq::gateway {

std::string_view KeyTable::key(std::uint32_t number) const {
    const std::size_t begin = number == 0 ? 0 : m_ends[number - 1];
    return std::string_view(m_letters).substr(begin, m_ends[number] - begin);
}

/// The slot that holds `key`, or the empty one where it belongs.
std::size_t KeyTable::slotOf(std::string_view key) const {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = std::hash<std::string_view>{}(key)&mask;
    while (m_slots[slot] != kNone && this->key(m_slots[slot]) != key)
        slot = (slot + 1) & mask;
    return slot;
}

void KeyTable::grow() {
    m_slots.assign(m_slots.empty() ? 1024 : m_slots.size() * 2, kNone);
    for (std::uint32_t number = 0; number < m_ends.size(); ++number)
        m_slots[slotOf(key(number))] = number;
}

std::uint32_t KeyTable::add(std::string_view key) {
    if ((m_ends.size() + 1) * 2 > m_slots.size()) grow();
    std::uint32_t& slot = m_slots[slotOf(key)];
    if (slot == kNone) {
        slot = static_cast<std::uint32_t>(m_ends.size());
        m_letters += key;
        m_ends.push_back(static_cast<std::uint32_t>(m_letters.size()));
    }
    return slot;
}

std::uint32_t KeyTable::find(std::string_view key) const {
    return m_slots.empty() ? kNone : m_slots[slotOf(key)];
}

} // namespace vorq::gateway
