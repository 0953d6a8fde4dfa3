#include "doubles/backend/FloodServer.h"

#include <cstdlib>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {

FloodServer::FloodServer(qint64 bytes, Kind kind)
    : m_event("data: {\"text\":\"" + QByteArray(4000, 'x') + "\"}\n\n"),
      m_bytes(bytes),
      m_kind(kind),
      m_listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::bind(m_listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(m_listener, 1) != 0)
        std::abort();
    m_thread = std::thread([this] { run(); });
}

FloodServer::~FloodServer() {
    ::shutdown(m_listener, SHUT_RDWR);
    m_thread.join();
    ::close(m_listener);
}

QString FloodServer::url() const {
    sockaddr_in address{};
    socklen_t length = sizeof address;
    ::getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &length);
    return u"http://127.0.0.1:%1"_s.arg(ntohs(address.sin_port));
}

bool FloodServer::write(int socket, const QByteArray& bytes) const {
    for (qsizetype at = 0; at < bytes.size();) {
        const auto length = static_cast<std::size_t>(bytes.size() - at);
        const ssize_t written = ::send(socket, bytes.constData() + at, length, MSG_NOSIGNAL);
        if (written <= 0) return false;
        at += written;
    }
    return true;
}

QByteArray FloodServer::start() const {
    const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\n"
                            "Transfer-Encoding: chunked\r\n";
    switch (m_kind) {
    case Kind::Events:
        return head + "\r\n";
    case Kind::Headers:
        return head;
    case Kind::Trailers:
        break;
    }
    return head + "\r\n" + QByteArray::number(m_event.size(), 16) + "\r\n" + m_event + "\r\n0\r\n";
}

QByteArray FloodServer::piece() const {
    if (m_kind != Kind::Events)
        return QByteArray("X-More: " + QByteArray(1000, 'x') + "\r\n").repeated(64);
    const QByteArray events = m_event.repeated(16);
    return QByteArray::number(events.size(), 16) + "\r\n" + events + "\r\n";
}

void FloodServer::run() {
    const int socket = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) return;
    char request[4096];
    bool open = ::recv(socket, request, sizeof request, 0) > 0 && write(socket, start());
    const QByteArray more = piece();
    const qint64 counted = m_kind == Kind::Events ? 16 * m_event.size() : more.size();
    while (open && m_sent < m_bytes) {
        open = write(socket, more);
        m_sent += counted;
    }
    if (open && m_kind == Kind::Events) write(socket, "0\r\n\r\n");
    ::close(socket);
}

} // namespace vorq
