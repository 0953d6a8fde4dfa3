#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <thread>

namespace vorq {

/// A server on a thread of its own that answers one request in a chunked body, as fast as the other
/// side takes it.
class FloodServer {
  public:
    /// What it sends without an end: events of some 4 KB, headers, or trailers behind one event.
    enum class Kind { Events, Headers, Trailers };

    /// Closes after this many bytes of it.
    explicit FloodServer(qint64 bytes, Kind kind = Kind::Events);
    ~FloodServer();
    FloodServer(const FloodServer&) = delete;
    FloodServer& operator=(const FloodServer&) = delete;

    /// "http://127.0.0.1:<port>"
    [[nodiscard]] QString url() const;

    /// Bytes of what it sends without an end handed to the system so far.
    [[nodiscard]] qint64 sent() const { return m_sent; }
    [[nodiscard]] int eventSize() const { return static_cast<int>(m_event.size()); }

  private:
    void run();
    [[nodiscard]] QByteArray start() const;
    [[nodiscard]] QByteArray piece() const;
    bool write(int socket, const QByteArray& bytes) const;

    QByteArray m_event;
    qint64 m_bytes;
    Kind m_kind;
    int m_listener;
    std::atomic<qint64> m_sent = 0;
    std::thread m_thread;
};

} // namespace vorq
