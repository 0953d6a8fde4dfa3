#include "shell/window/FocusLoss.h"

#include <utility>

namespace vorq {

FocusLoss::FocusLoss(Clock& clock, std::function<void()> lost)
    : m_clock(clock), m_lost(std::move(lost)) {}

FocusLoss::~FocusLoss() {
    forgetTimer();
}

void FocusLoss::setActive(bool isActive) {
    if (isActive == std::exchange(m_isActive, isActive)) return;
    forgetTimer();
    if (isActive) return;
    m_timer = m_clock.after(moment, [this] {
        m_timer.reset();
        m_lost();
    });
}

void FocusLoss::forgetTimer() {
    if (const auto timer = std::exchange(m_timer, std::nullopt)) m_clock.cancel(*timer);
}

} // namespace vorq
