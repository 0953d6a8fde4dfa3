#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <thread>

namespace vorq {

/// A server on a thread of its own that answers one request with events as fast as the other side
/// takes them, in a chunked body.
class FloodServer {
  public:
    /// Sends events of some 4 KB until this many bytes of them are sent, then closes.
    explicit FloodServer(qint64 bytes);
    ~FloodServer();
    FloodServer(const FloodServer&) = delete;
    FloodServer& operator=(const FloodServer&) = delete;

    /// "http://127.0.0.1:<port>"
    [[nodiscard]] QString url() const;

    /// Bytes of events handed to the system so far.
    [[nodiscard]] qint64 sent() const { return m_sent; }
    [[nodiscard]] int eventSize() const { return static_cast<int>(m_event.size()); }

  private:
    void run();
    bool write(int socket, const QByteArray& bytes) const;

    QByteArray m_event;
    qint64 m_bytes;
    int m_listener;
    std::atomic<qint64> m_sent = 0;
    std::thread m_thread;
};

} // namespace vorq
