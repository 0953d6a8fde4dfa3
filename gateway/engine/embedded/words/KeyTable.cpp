#include "engine/embedded/words/KeyTable.h"

#include <functional>

namespace vorq::gateway {

std::string_view KeyTable::key(std::uint32_t number) const {
    const std::size_t begin = number == 0 ? 0 : ends_[number - 1];
    return std::string_view(letters_).substr(begin, ends_[number] - begin);
}

/// The slot that holds `key`, or the empty one where it belongs.
std::size_t KeyTable::slotOf(std::string_view key) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = std::hash<std::string_view>{}(key)&mask;
    while (slots_[slot] != kNone && this->key(slots_[slot]) != key)
        slot = (slot + 1) & mask;
    return slot;
}

void KeyTable::grow() {
    slots_.assign(slots_.empty() ? 1024 : slots_.size() * 2, kNone);
    for (std::uint32_t number = 0; number < ends_.size(); ++number)
        slots_[slotOf(key(number))] = number;
}

std::uint32_t KeyTable::add(std::string_view key) {
    if ((ends_.size() + 1) * 2 > slots_.size()) grow();
    std::uint32_t& slot = slots_[slotOf(key)];
    if (slot == kNone) {
        slot = static_cast<std::uint32_t>(ends_.size());
        letters_ += key;
        ends_.push_back(static_cast<std::uint32_t>(letters_.size()));
    }
    return slot;
}

std::uint32_t KeyTable::find(std::string_view key) const {
    return slots_.empty() ? kNone : slots_[slotOf(key)];
}

} // namespace vorq::gateway
