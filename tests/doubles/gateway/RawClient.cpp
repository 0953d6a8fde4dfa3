#include "doubles/gateway/RawClient.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace vorq::gateway::testing {

RawClient::RawClient(int port, int receiveBuffer)
    : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    if (receiveBuffer > 0) {
        setsockopt(m_socket, SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(m_socket, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        close(m_socket);
        throw std::runtime_error("connect");
    }
}

RawClient::~RawClient() {
    close(m_socket);
}

void RawClient::send(const std::string& bytes) {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count =
            ::send(m_socket, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0) return;
        sent += static_cast<std::size_t>(count);
    }
}

void RawClient::endSending() {
    shutdown(m_socket, SHUT_WR);
}

std::string RawClient::receive() {
    pollfd descriptor{.fd = m_socket, .events = POLLIN, .revents = 0};
    if (poll(&descriptor, 1, 10'000) <= 0) return {};
    std::array<char, 65536> buffer{};
    const ssize_t count = recv(m_socket, buffer.data(), buffer.size(), 0);
    return count > 0 ? std::string(buffer.data(), static_cast<std::size_t>(count)) : std::string();
}

std::string RawClient::receiveUntil(const std::string& mark) {
    std::string all;
    while (all.find(mark) == std::string::npos) {
        const std::string piece = receive();
        if (piece.empty()) break;
        all += piece;
    }
    return all;
}

std::string RawClient::receiveAll() {
    std::string all;
    for (std::string piece = receive(); !piece.empty(); piece = receive())
        all += piece;
    return all;
}

bool RawClient::isClosedWithin(std::chrono::milliseconds time) {
    pollfd descriptor{.fd = m_socket, .events = POLLIN, .revents = 0};
    char byte = 0;
    return poll(&descriptor, 1, static_cast<int>(time.count())) > 0 &&
           recv(m_socket, &byte, 1, 0) <= 0;
}

std::string rawExchange(int port, const std::string& request) {
    RawClient client(port);
    client.send(request);
    client.endSending();
    return client.receiveAll();
}

} // namespace vorq::gateway::testing
