#pragma once

#include "http/RequestRouter.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace vorq::gateway {

/// Serves a router over HTTP. Each connection carries one request.
class GatewayServer {
  public:
    /// `router` outlives the server.
    explicit GatewayServer(RequestRouter& router);
    ~GatewayServer();
    GatewayServer(const GatewayServer&) = delete;
    GatewayServer& operator=(const GatewayServer&) = delete;

    /// Takes the address, and a free port where `port` is 0. Gives the port. Throws
    /// std::runtime_error with a sentence for the user.
    int bind(const std::string& host, int port);
    /// Serves until `stop`; returns once no request is under way.
    void run();
    /// Ends all streams and makes `run` return. From any thread, as often as one likes.
    void stop();

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace vorq::gateway
