#pragma once

#include "http/Asio.h"

#include <boost/asio/basic_socket_acceptor.hpp>

#include <chrono>
#include <memory>
#include <string>
#include <thread>

namespace vorq::bench {

/// What the provider of the benchmark writes, and when.
struct StreamScript {
    std::chrono::milliseconds untilFirst{500};
    std::chrono::milliseconds pause{100};
    int pieces = 45;
};

/// A server of the gateway's library with nothing in it, on a thread of its own. At
/// /v1/chat/completions it is a provider that follows the script; at /stream it sends the script as
/// the gateway's own events; anything else gets a short document.
class BareServer {
  public:
    explicit BareServer(StreamScript script);
    ~BareServer();
    BareServer(const BareServer&) = delete;
    BareServer& operator=(const BareServer&) = delete;

    [[nodiscard]] int port() const { return m_acceptor.local_endpoint().port(); }
    /// Of its thread, in seconds.
    [[nodiscard]] double processorTime();

  private:
    [[nodiscard]] gateway::Awaitable<void> accept();
    [[nodiscard]] gateway::Awaitable<void> serve(gateway::Socket socket);
    [[nodiscard]] gateway::Awaitable<void> stream(gateway::Socket& socket, bool asProvider);

    StreamScript m_script;
    gateway::net::io_context m_io{1};
    gateway::Acceptor m_acceptor;
    std::thread m_thread;
};

} // namespace vorq::bench
