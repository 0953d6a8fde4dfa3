#include "http/Connection.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace vorq::gateway {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

constexpr seconds kFirstByteTime{10};
constexpr seconds kRequestTime{60};
constexpr milliseconds kCrowdedFirstByteTime{300};
constexpr seconds kCrowdedRequestTime{3};
constexpr seconds kWriteTime{60};
constexpr milliseconds kFinishTime{1000};
constexpr milliseconds kSlice{50};
constexpr std::size_t kMostReceived = std::size_t{64} * 1024 * 1024;

using NameFunction = int (*)(int, sockaddr*, socklen_t*);

void addressOf(socket_t socket, NameFunction name, std::string& ip, int& port) {
    sockaddr_storage address{};
    socklen_t length = sizeof address;
    if (name(socket, reinterpret_cast<sockaddr*>(&address), &length) != 0) return;
    std::array<char, INET6_ADDRSTRLEN> text{};
    if (address.ss_family == AF_INET) {
        const auto* v4 = reinterpret_cast<const sockaddr_in*>(&address);
        inet_ntop(AF_INET, &v4->sin_addr, text.data(), text.size());
        port = ntohs(v4->sin_port);
    } else if (address.ss_family == AF_INET6) {
        const auto* v6 = reinterpret_cast<const sockaddr_in6*>(&address);
        inet_ntop(AF_INET6, &v6->sin6_addr, text.data(), text.size());
        port = ntohs(v6->sin6_port);
    }
    ip = text.data();
}

} // namespace

Connection::Connection(socket_t socket, Cancelled stopping, Cancelled crowded)
    : socket_(socket),
      stopping_(std::move(stopping)),
      crowded_(std::move(crowded)),
      opened_(steady_clock::now()),
      requestDeadline_(opened_ + kFirstByteTime) {}

Connection::~Connection() {
    ::close(socket_);
}

bool Connection::waitFor(short events, SteadyTime deadline) const {
    while (!stopping_() && steady_clock::now() < deadline) {
        pollfd descriptor{.fd = socket_, .events = events, .revents = 0};
        if (poll(&descriptor, 1, static_cast<int>(kSlice.count())) > 0) return true;
    }
    return false;
}

/// Slice by slice, since a crowd may gather meanwhile.
bool Connection::waitForRequest() const {
    const milliseconds patience = received_ == 0 ? kCrowdedFirstByteTime : kCrowdedRequestTime;
    while (!stopping_() && steady_clock::now() < requestDeadline_) {
        if (crowded_() && steady_clock::now() > opened_ + patience) return false;
        const SteadyTime slice = steady_clock::now() + kSlice;
        if (waitFor(POLLIN, std::min(slice, requestDeadline_))) return true;
    }
    return false;
}

bool Connection::is_readable() const {
    return bufferBegin_ < bufferEnd_ || waitForRequest();
}

bool Connection::is_writable() const {
    return !peerIsGone();
}

ssize_t Connection::fill() {
    if (received_ > kMostReceived || !waitForRequest()) return -1;
    const ssize_t count = recv(socket_, buffer_.data(), buffer_.size(), 0);
    if (count <= 0) return count;
    // A connection opened in advance may stay silent; it must not hold a thread for long.
    if (received_ == 0) requestDeadline_ = steady_clock::now() + kRequestTime;
    received_ += static_cast<std::size_t>(count);
    bufferBegin_ = 0;
    bufferEnd_ = static_cast<std::size_t>(count);
    return count;
}

ssize_t Connection::read(char* data, std::size_t size) {
    if (bufferBegin_ == bufferEnd_) {
        if (const ssize_t count = fill(); count <= 0) return count;
    }
    const std::size_t count = std::min(size, bufferEnd_ - bufferBegin_);
    std::memcpy(data, buffer_.data() + bufferBegin_, count);
    bufferBegin_ += count;
    return static_cast<ssize_t>(count);
}

ssize_t Connection::write(const char* data, std::size_t size) {
    std::size_t sent = 0;
    const SteadyTime deadline = steady_clock::now() + kWriteTime;
    while (sent < size) {
        const ssize_t count = send(socket_, data + sent, size - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count > 0) {
            sent += static_cast<std::size_t>(count);
        } else if (count < 0 && errno != EAGAIN && errno != EINTR) {
            return -1;
        } else if (!waitFor(POLLOUT, deadline)) {
            return -1;
        }
    }
    return static_cast<ssize_t>(sent);
}

void Connection::get_remote_ip_and_port(std::string& ip, int& port) const {
    addressOf(socket_, getpeername, ip, port);
}

void Connection::get_local_ip_and_port(std::string& ip, int& port) const {
    addressOf(socket_, getsockname, ip, port);
}

bool Connection::peerIsGone() const {
    pollfd descriptor{.fd = socket_, .events = POLLRDHUP, .revents = 0};
    if (poll(&descriptor, 1, 0) <= 0) return false;
    return (descriptor.revents & (POLLRDHUP | POLLHUP | POLLERR)) != 0;
}

void Connection::finish() {
    shutdown(socket_, SHUT_WR);
    const SteadyTime deadline = steady_clock::now() + kFinishTime;
    while (received_ <= kMostReceived && waitFor(POLLIN, deadline)) {
        const ssize_t count = recv(socket_, buffer_.data(), buffer_.size(), 0);
        if (count <= 0) return;
        received_ += static_cast<std::size_t>(count);
    }
}

} // namespace vorq::gateway
