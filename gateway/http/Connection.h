#pragma once

#include "support/Cancellation.h"

#include <httplib.h>

#include <array>
#include <chrono>
#include <string>

namespace vorq::gateway {

/// One accepted socket as the HTTP library reads and writes it: every wait is bounded, gives up
/// when the server stops, and the size of what a peer may send is limited. Owns and closes the
/// socket.
class Connection final : public httplib::Stream {
  public:
    /// While `crowded` says that others wait for their turn, a slow peer is given little time.
    Connection(socket_t socket, Cancelled stopping, Cancelled crowded);
    ~Connection() override;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] bool is_readable() const override;
    [[nodiscard]] bool is_writable() const override;
    ssize_t read(char* data, std::size_t size) override;
    ssize_t write(const char* data, std::size_t size) override;
    using Stream::write;
    void get_remote_ip_and_port(std::string& ip, int& port) const override;
    void get_local_ip_and_port(std::string& ip, int& port) const override;
    [[nodiscard]] socket_t socket() const override { return socket_; }

    /// True once the peer closed its end; a client that still waits for an answer never does.
    [[nodiscard]] bool peerIsGone() const;
    /// Lets the peer read the answer even if it is still sending a request nobody reads.
    void finish();

  private:
    using SteadyTime = std::chrono::steady_clock::time_point;
    [[nodiscard]] bool waitFor(short events, SteadyTime deadline) const;
    [[nodiscard]] bool waitForRequest() const;
    [[nodiscard]] ssize_t fill();

    socket_t socket_;
    Cancelled stopping_;
    Cancelled crowded_;
    SteadyTime opened_;
    SteadyTime requestDeadline_;
    std::size_t received_ = 0;
    std::array<char, 16384> buffer_{};
    std::size_t bufferBegin_ = 0;
    std::size_t bufferEnd_ = 0;
};

} // namespace vorq::gateway
