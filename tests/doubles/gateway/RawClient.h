#pragma once

#include <chrono>
#include <string>

namespace vorq::gateway::testing {

/// A TCP connection to a port of this computer, for requests that no HTTP library would send.
class RawClient {
  public:
    /// `receiveBuffer` is how many bytes the system takes in before they are asked for, about;
    /// with 0 it decides itself.
    explicit RawClient(int port, int receiveBuffer = 0);
    ~RawClient();
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    void send(const std::string& bytes);
    /// Says that nothing more will be sent.
    void endSending();
    /// What comes next, empty at the end or after ten seconds of silence.
    std::string receive();
    /// Everything until `mark` was received or the peer closed.
    std::string receiveUntil(const std::string& mark);
    std::string receiveAll();
    /// Whether the peer ends the connection in time, and sends nothing before.
    [[nodiscard]] bool isClosedWithin(std::chrono::milliseconds time);

  private:
    int m_socket;
};

/// Sends the bytes, ends sending, and gives the whole answer.
[[nodiscard]] std::string rawExchange(int port, const std::string& request);

} // namespace vorq::gateway::testing
