#include "storage/Patience.h"

#include "storage/Database.h"

#include <thread>

namespace vorq::gateway {
namespace {

constexpr std::chrono::milliseconds kPause{10};

} // namespace

void Patience::attempt(const std::function<void()>& work) {
    while (true) {
        try {
            work();
            const std::scoped_lock lock(m_mutex);
            m_busySince.reset();
            return;
        } catch (const DatabaseError& error) {
            if (!error.isBusy || busyFor() > kLimit) throw;
        }
        std::this_thread::sleep_for(kPause);
    }
}

std::chrono::steady_clock::duration Patience::busyFor() {
    const std::scoped_lock lock(m_mutex);
    const Moment now = std::chrono::steady_clock::now();
    // Whether it was free between two attempts that lie far apart, nobody knows.
    if (!m_busySince || now - m_lastBusy > kLimit) m_busySince = now;
    m_lastBusy = now;
    return now - *m_busySince;
}

} // namespace vorq::gateway
