#include "shell/notices/PanelHold.h"

#include <utility>

namespace vorq {

PanelHold::PanelHold(std::shared_ptr<int> count) : m_count(std::move(count)) {
    ++*m_count;
}

PanelHold::PanelHold(PanelHold&& other) noexcept : m_count(std::exchange(other.m_count, nullptr)) {}

PanelHold& PanelHold::operator=(PanelHold&& other) noexcept {
    if (this == &other) return *this;
    giveBack();
    m_count = std::exchange(other.m_count, nullptr);
    return *this;
}

void PanelHold::giveBack() {
    if (const std::shared_ptr<int> count = std::exchange(m_count, nullptr)) --*count;
}

PanelHold PanelHolds::take(PanelHoldKind kind) {
    return PanelHold(m_counts[index(kind)]);
}

bool PanelHolds::isHeld() const {
    return isHeld(PanelHoldKind::Menu) || isHeld(PanelHoldKind::Dialog);
}

} // namespace vorq
