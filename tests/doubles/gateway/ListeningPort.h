#pragma once

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <stdexcept>

namespace vorq::gateway::testing {

/// Something that listens at a free port of 127.0.0.1 and takes nobody in.
class ListeningPort {
  public:
    ListeningPort() : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        if (m_socket < 0) throw std::runtime_error("socket");
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* name = reinterpret_cast<sockaddr*>(&address);
        socklen_t size = sizeof address;
        if (bind(m_socket, name, size) != 0 || listen(m_socket, 1) != 0 ||
            getsockname(m_socket, name, &size) != 0) {
            close(m_socket);
            throw std::runtime_error("listen");
        }
        m_port = ntohs(address.sin_port);
    }
    ~ListeningPort() { close(m_socket); }
    ListeningPort(const ListeningPort&) = delete;
    ListeningPort& operator=(const ListeningPort&) = delete;

    [[nodiscard]] std::uint16_t port() const { return m_port; }

  private:
    int m_socket;
    std::uint16_t m_port = 0;
};

} // namespace vorq::gateway::testing
