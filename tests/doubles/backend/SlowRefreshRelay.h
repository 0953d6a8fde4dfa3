#pragma once

#include <QByteArray>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

namespace httplib {
class Server;
}

namespace vorq {

/// Stands between programs and a backend of this computer, and lets the answer of each refresh that
/// succeeded come late: the time in which another program, or a death, can come between. Everything
/// else passes at once, though only as a whole.
class SlowRefreshRelay {
  public:
    SlowRefreshRelay(const QByteArray& backendUrl, std::chrono::milliseconds delay);
    ~SlowRefreshRelay();
    SlowRefreshRelay(const SlowRefreshRelay&) = delete;
    SlowRefreshRelay& operator=(const SlowRefreshRelay&) = delete;

    [[nodiscard]] QByteArray url() const;
    /// Refreshes that the backend has granted.
    [[nodiscard]] int granted() const { return m_granted; }

  private:
    std::unique_ptr<httplib::Server> m_server;
    std::atomic<int> m_granted = 0;
    int m_port = 0;
    std::thread m_thread;
};

} // namespace vorq
