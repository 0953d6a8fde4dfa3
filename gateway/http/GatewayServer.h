#pragma once

#include "http/RequestRouter.h"

#include <cstddef>
#include <memory>
#include <string>

namespace vorq::gateway {

/// Serves a router over HTTP. Each connection carries one request. One thread has all sockets, so
/// that a connection costs no more than its memory, however long it takes.
class GatewayServer {
  public:
    static constexpr std::size_t kMostConnections = 8192;

    /// `router` outlives the server, and so does whatever makes its replies. Of more than
    /// `mostConnections` those go first that have not sent their request.
    explicit GatewayServer(RequestRouter& router, std::size_t mostConnections = kMostConnections);
    ~GatewayServer();
    GatewayServer(const GatewayServer&) = delete;
    GatewayServer& operator=(const GatewayServer&) = delete;

    /// Takes the address, and a free port where `port` is 0. Gives the port. Throws
    /// std::runtime_error with a sentence for the user.
    int bind(const std::string& host, int port);
    /// Serves until `stop`, and returns once no request is under way. Throws std::runtime_error
    /// with a sentence for the user if the system lets no connection in any more. To be called
    /// once.
    void run();
    /// Ends all streams and makes `run` return. From any thread, as often as one likes.
    void stop();

  private:
    class Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace vorq::gateway
