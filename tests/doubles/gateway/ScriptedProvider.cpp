#include "doubles/gateway/ScriptedProvider.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace vorq::gateway::testing {
namespace {

struct Listener {
    int socket = -1;
    int port = 0;
};

Listener listenOnLoopback(ReadingPause pause = {}) {
    Listener listener{.socket = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0), .port = 0};
    if (listener.socket < 0) throw std::runtime_error("socket");
    if (pause > ReadingPause()) {
        // The system would take megabytes in its stead.
        const int size = 64 * 1024;
        setsockopt(listener.socket, SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* plain = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener.socket, plain, length) != 0 || listen(listener.socket, 16) != 0 ||
        getsockname(listener.socket, plain, &length) != 0) {
        throw std::runtime_error("listen");
    }
    listener.port = ntohs(address.sin_port);
    return listener;
}

} // namespace

std::string ProviderPeer::readRequest(ReadingPause pause) {
    std::string request;
    std::array<char, 65536> buffer{};
    std::size_t wanted = std::string::npos;
    while (request.size() < wanted) {
        const int wholePiece = pause > ReadingPause() ? MSG_WAITALL : 0;
        const std::size_t size = std::min(buffer.size(), wanted - request.size());
        const ssize_t count = recv(m_socket, buffer.data(), size, wholePiece);
        if (count <= 0) break;
        std::this_thread::sleep_for(pause);
        request.append(buffer.data(), static_cast<std::size_t>(count));
        const std::size_t end = request.find("\r\n\r\n");
        const std::size_t length = request.find("Content-Length: ");
        if (end != std::string::npos && length < end) {
            wanted = end + 4 + std::stoul(request.substr(length + 16));
        } else if (end != std::string::npos && request.starts_with("GET ")) {
            break; // it has no body
        }
    }
    return request;
}

bool ProviderPeer::send(const std::string& bytes) {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count =
            ::send(m_socket, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0) return false;
        sent += static_cast<std::size_t>(count);
    }
    return true;
}

void ProviderPeer::streamHead() {
    send("HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\nConnection: close\r\n\r\n");
}

void ProviderPeer::delta(const std::string& text) {
    const nlohmann::json event = {{"choices", {{{"delta", {{"content", text}}}}}}};
    send("data: " + event.dump() + "\n\n");
}

void ProviderPeer::answer(int status, const std::string& body, const std::string& type) {
    send("HTTP/1.1 " + std::to_string(status) + " Status\r\nContent-Type: " + type +
         "\r\nContent-Length: " + std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n" +
         body);
}

bool ProviderPeer::awaitClose() {
    pollfd descriptor{.fd = m_socket, .events = POLLIN, .revents = 0};
    char byte = 0;
    return poll(&descriptor, 1, 10'000) > 0 && recv(m_socket, &byte, 1, 0) <= 0;
}

void ProviderPeer::reset() {
    const linger hard{.l_onoff = 1, .l_linger = 0};
    setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
}

ScriptedProvider::ScriptedProvider(Script script, ReadingPause pause)
    : m_script(std::move(script)), m_pause(pause) {
    const Listener listener = listenOnLoopback(pause);
    m_listener = listener.socket;
    m_port = listener.port;
    m_thread = std::thread([this] { serve(); });
}

ScriptedProvider::~ScriptedProvider() {
    m_stopping = true;
    shutdown(m_listener, SHUT_RDWR);
    {
        const std::scoped_lock lock(m_mutex);
        if (m_connection >= 0) shutdown(m_connection, SHUT_RDWR);
    }
    m_thread.join();
    close(m_listener);
}

void ScriptedProvider::serve() {
    while (!m_stopping) {
        const int socket = accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0) return;
        ProviderPeer peer(socket);
        {
            const std::scoped_lock lock(m_mutex);
            m_connection = socket;
        }
        {
            const std::string request = peer.readRequest(m_pause);
            const std::scoped_lock lock(m_mutex);
            m_lastRequest = request;
        }
        m_script(peer);
        const std::scoped_lock lock(m_mutex);
        m_connection = -1;
        close(socket);
    }
}

std::string ScriptedProvider::address() const {
    return "http://127.0.0.1:" + std::to_string(m_port);
}

std::string ScriptedProvider::lastRequest() const {
    const std::scoped_lock lock(m_mutex);
    return m_lastRequest;
}

nlohmann::json ScriptedProvider::lastBody() const {
    const std::string request = lastRequest();
    return nlohmann::json::parse(request.substr(request.find("\r\n\r\n") + 4));
}

int closedPort() {
    const Listener listener = listenOnLoopback();
    close(listener.socket);
    return listener.port;
}

} // namespace vorq::gateway::testing
