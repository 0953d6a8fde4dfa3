#include "platform/linux/atspi/BusAnswer.h"

#include <QByteArray>
#include <QList>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace vorq {
namespace {

constexpr int greetingLimit = 500; // milliseconds

// The first of the addresses, "unix:path=…,guid=…;…", with which a program begins.
QByteArray socketName(const QString& busAddress) {
    const QByteArray first = busAddress.section(u';', 0, 0).toUtf8();
    if (!first.startsWith("unix:")) return {};
    for (const QByteArray& part : first.mid(5).split(',')) {
        const QByteArray value = QByteArray::fromPercentEncoding(part.mid(part.indexOf('=') + 1));
        if (part.startsWith("path=")) return value;
        if (part.startsWith("abstract=")) return QByteArray(1, '\0') + value;
    }
    return {};
}

class Socket {
  public:
    Socket() : m_file(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() {
        if (m_file >= 0) ::close(m_file);
    }

    // 0, or what is wrong.
    [[nodiscard]] int connectTo(const QByteArray& name) const {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (static_cast<std::size_t>(name.size()) >= sizeof address.sun_path) return ENAMETOOLONG;
        std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
        const auto length =
            static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) +
                                   static_cast<std::size_t>(name.size()) + (name[0] != 0 ? 1 : 0));
        return ::connect(m_file, reinterpret_cast<const sockaddr*>(&address), length) == 0 ? 0
                                                                                           : errno;
    }
    [[nodiscard]] bool answersTo(const QByteArray& greeting) const {
        const auto size = static_cast<std::size_t>(greeting.size());
        if (::send(m_file, greeting.constData(), size, MSG_NOSIGNAL) < 0) return true;
        pollfd watched{m_file, POLLIN, 0};
        return ::poll(&watched, 1, greetingLimit) != 0;
    }

  private:
    int m_file;
};

} // namespace

bool answersConnections(const QString& busAddress) {
    const QByteArray name = socketName(busAddress);
    if (name.isEmpty()) return true;
    const Socket socket;
    const int error = socket.connectTo(name);
    // Nobody takes up those who wait in line.
    if (error == EAGAIN) return false;
    if (error != 0) return true;
    // Asks which ways there are to say who we are.
    return socket.answersTo(QByteArray("\0AUTH\r\n", 7));
}

} // namespace vorq
