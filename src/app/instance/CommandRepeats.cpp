#include "app/instance/CommandRepeats.h"

#include <algorithm>
#include <utility>

namespace vorq {

bool CommandRepeats::isRepetition(Verb verb, Clock::Duration given) {
    const bool isSame = std::exchange(m_last, verb) == verb;
    const Clock::Duration before = std::exchange(m_lastGiven, std::max(m_lastGiven, given));
    return isSame && given - before < pause;
}

} // namespace vorq
