#include "platform/linux/desktop/LoopbackAddress.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int httpPort = 80;
constexpr std::uint32_t loopbackNet = 127;

std::optional<in_addr> fourOf(const QString& host) {
    in_addr address{};
    if (::inet_pton(AF_INET, host.toLatin1().constData(), &address) != 1) return std::nullopt;
    return ntohl(address.s_addr) >> 24 == loopbackNet ? std::optional(address) : std::nullopt;
}

bool isLoopbackSix(const QString& host) {
    in6_addr address{};
    return ::inet_pton(AF_INET6, host.toLatin1().constData(), &address) == 1 &&
           IN6_IS_ADDR_LOOPBACK(&address);
}

template<typename Address>
bool connects(const Address& address, int family) {
    const int descriptor = ::socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0) return false;
    // What is not reached within the computer is refused at once.
    const bool isConnected =
        ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(descriptor);
    return isConnected;
}

} // namespace

LoopbackAddress::LoopbackAddress(QString host, std::uint16_t port)
    : m_host(std::move(host)), m_port(port) {}

std::optional<LoopbackAddress> LoopbackAddress::of(const QUrl& url) {
    if (url.scheme().compare(u"http", Qt::CaseInsensitive) != 0) return std::nullopt;
    const QString named = url.host();
    const QString host = named == u"localhost" ? u"127.0.0.1"_s : named;
    if (!fourOf(host) && !isLoopbackSix(host)) return std::nullopt;
    return LoopbackAddress(host, static_cast<std::uint16_t>(url.port(httpPort)));
}

bool LoopbackAddress::accepts() const {
    if (const auto four = fourOf(m_host)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(m_port);
        address.sin_addr = *four;
        return connects(address, AF_INET);
    }
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_port = htons(m_port);
    address.sin6_addr = in6addr_loopback;
    return connects(address, AF_INET6);
}

} // namespace vorq
