#include "areas/SaveRetries.h"

#include <utility>

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr int quickTries = 10;
constexpr Clock::Duration quickPause = 1s;
constexpr Clock::Duration longPause = 15s;

} // namespace

SaveRetries::SaveRetries(Clock& clock, std::function<bool()> retry)
    : m_clock(clock), m_retry(std::move(retry)) {}

SaveRetries::~SaveRetries() {
    if (m_timer) m_clock.cancel(*m_timer);
}

void SaveRetries::request() {
    if (m_timer) return;
    m_tries = 0;
    wait();
}

void SaveRetries::wait() {
    m_timer =
        m_clock.after(m_tries < quickTries ? quickPause : longPause, [this] { handleTimer(); });
}

void SaveRetries::handleTimer() {
    ++m_tries;
    const bool isDone = m_retry();
    m_timer.reset();
    if (!isDone) wait();
}

} // namespace vorq
