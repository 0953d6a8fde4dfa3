#include "app/CommandRepeats.h"

#include <utility>

namespace vorq {

bool CommandRepeats::isRepetition(Verb verb) {
    const std::optional<Verb> last = std::exchange(m_last, verb);
    const Clock::Duration lastTime = std::exchange(m_lastTime, m_clock.now());
    return last == verb && m_lastTime - lastTime < pause;
}

} // namespace vorq
