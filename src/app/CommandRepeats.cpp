#include "app/CommandRepeats.h"

#include <utility>

namespace vorq {

bool CommandRepeats::isRepetition() {
    const Clock::Duration now = m_clock.now();
    const std::optional<Clock::Duration> last = std::exchange(m_last, now);
    return last && now - *last < pause;
}

} // namespace vorq
