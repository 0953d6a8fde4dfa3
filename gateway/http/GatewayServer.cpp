#include "http/GatewayServer.h"

#include "http/Asio.h"
#include "http/HttpConnection.h"
#include "http/ServerCore.h"
#include "support/Filled.h"

#include <boost/asio/basic_socket_acceptor.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/ip/v6_only.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/redirect_error.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

namespace vorq::gateway {
namespace {

using boost::system::error_code;
using Resolver = net::ip::basic_resolver<net::ip::tcp, Executor>;

constexpr std::chrono::milliseconds kAcceptPause{50};
/// One after the other, each would wait for all that the others ask for.
constexpr int kMostAtOnce = 512;

/// Whether accepting may succeed again though nobody does anything about it.
bool isPassing(const error_code& error) {
    constexpr std::array lasting = {EBADF, EINVAL, ENOTSOCK, EOPNOTSUPP, EFAULT};
    return std::ranges::find(lasting, error.value()) == lasting.end();
}

} // namespace

class GatewayServer::Implementation {
  public:
    Implementation(RequestRouter& router, std::size_t mostConnections)
        : core_(router, mostConnections), acceptor_(core_.io) {}

    int bind(const std::string& host, int port);
    void run();
    void stop();

  private:
    void listenOn(const net::ip::tcp::endpoint& endpoint, error_code& error);
    void keepAccepting();
    [[nodiscard]] Awaitable<void> accept(std::shared_ptr<bool> sign);
    [[nodiscard]] bool isAccepting() const { return !acceptSign_.expired(); }
    void begin(Socket socket);
    [[nodiscard]] Awaitable<void> outwait(const error_code& error);
    void endAll();

    ServerCore core_;
    Acceptor acceptor_;
    /// Lasts as long as `accept`, which may end without a word where memory is short.
    std::weak_ptr<bool> acceptSign_;
    bool hasComplained_ = false;
    error_code failure_;
};

void GatewayServer::Implementation::listenOn(const net::ip::tcp::endpoint& endpoint,
                                             error_code& error) {
    const auto attempt = [&](auto&& step) {
        if (!error) static_cast<void>(step());
    };
    error = {};
    attempt([&] { return acceptor_.open(endpoint.protocol(), error); });
    // Without SO_REUSEPORT, so that a second gateway on the same port is noticed.
    attempt([&] { return acceptor_.set_option(Acceptor::reuse_address(true), error); });
    if (endpoint.protocol() == net::ip::tcp::v6()) {
        attempt([&] { return acceptor_.set_option(net::ip::v6_only(false), error); });
    }
    attempt([&] { return acceptor_.bind(endpoint, error); });
    attempt([&] { return acceptor_.listen(Acceptor::max_listen_connections, error); });
    attempt([&] { return acceptor_.non_blocking(true, error); });
    if (error) {
        error_code ignored;
        static_cast<void>(acceptor_.close(ignored));
    }
}

int GatewayServer::Implementation::bind(const std::string& host, int port) {
    error_code error;
    Resolver resolver(core_.io);
    const auto endpoints = resolver.resolve(host, std::to_string(port),
                                            Resolver::passive | Resolver::numeric_service, error);
    for (const auto& entry : endpoints) {
        listenOn(entry.endpoint(), error);
        if (!error) return acceptor_.local_endpoint().port();
    }
    throw std::runtime_error(port == 0 ? filled("Could not listen on {}.", host)
                                       : filled("Could not listen on {}:{}. Is another program, or "
                                                "another vorq-gateway, using that port?",
                                                host, port));
}

void GatewayServer::Implementation::run() {
    bool isOver = false;
    while (!isOver) {
        try {
            keepAccepting();
            if (isAccepting() || core_.stopping) {
                core_.io.run();
                isOver = true;
            } else {
                core_.io.run_for(kAcceptPause);
                core_.io.restart();
            }
        } catch (const std::exception& error) {
            // Memory that is short takes the connection in hand, not the server.
            std::fprintf(stderr, "vorq-gateway: a connection failed: %s\n", error.what());
        }
    }
    if (failure_) {
        throw std::runtime_error(
            filled("The system lets no connection in any more: {}.", failure_.message()));
    }
}

/// Memory that is short ends `accept`, which has to begin anew then.
void GatewayServer::Implementation::keepAccepting() {
    if (isAccepting() || core_.stopping) return;
    try {
        auto sign = std::make_shared<bool>(true);
        acceptSign_ = sign;
        net::co_spawn(core_.io, accept(std::move(sign)), [](const std::exception_ptr& failure) {
            if (failure) std::rethrow_exception(failure);
        });
    } catch (const std::bad_alloc&) {
        static_cast<void>(core_.room.dismissOldest());
    }
}

Awaitable<void> GatewayServer::Implementation::accept(std::shared_ptr<bool> sign) {
    const std::shared_ptr<bool> kept = std::move(sign);
    while (!core_.stopping) {
        error_code error;
        Socket socket(core_.io);
        co_await acceptor_.async_accept(socket, net::redirect_error(kAwait, error));
        if (core_.stopping) break;
        if (error) {
            co_await outwait(error);
            continue;
        }
        for (int i = 0; i < kMostAtOnce && !error; ++i) {
            begin(std::move(socket));
            socket = Socket(core_.io);
            static_cast<void>(acceptor_.accept(socket, error));
        }
        if (!error) begin(std::move(socket));
        if (error && error != boost::system::errc::operation_would_block) co_await outwait(error);
    }
}

void GatewayServer::Implementation::begin(Socket socket) {
    try {
        std::make_shared<HttpConnection>(core_, std::move(socket))->start();
    } catch (const std::bad_alloc&) {
        static_cast<void>(core_.room.dismissOldest());
    }
}

Awaitable<void> GatewayServer::Implementation::outwait(const error_code& error) {
    if (!isPassing(error)) {
        failure_ = error;
        core_.stopping = true;
        endAll();
        co_return;
    }
    if (error == boost::system::errc::connection_aborted) co_return;
    if (!std::exchange(hasComplained_, true)) {
        std::fprintf(stderr, "vorq-gateway: connections have to wait: %s\n",
                     error.message().c_str());
    }
    static_cast<void>(core_.room.dismissOldest());
    Timer pause(core_.io, kAcceptPause);
    error_code ignored;
    co_await pause.async_wait(net::redirect_error(kAwait, ignored));
}

void GatewayServer::Implementation::endAll() {
    error_code ignored;
    static_cast<void>(acceptor_.close(ignored));
    core_.room.announceStop();
}

void GatewayServer::Implementation::stop() {
    if (!core_.stopping.exchange(true)) net::post(core_.io, [this] { endAll(); });
}

GatewayServer::GatewayServer(RequestRouter& router, std::size_t mostConnections)
    : implementation_(std::make_unique<Implementation>(router, mostConnections)) {}

// Without memory for the word to stop the process had better end.
// NOLINTNEXTLINE(bugprone-exception-escape)
GatewayServer::~GatewayServer() {
    stop();
}

int GatewayServer::bind(const std::string& host, int port) {
    return implementation_->bind(host, port);
}

void GatewayServer::run() {
    implementation_->run();
}

void GatewayServer::stop() {
    implementation_->stop();
}

} // namespace vorq::gateway
