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
        : m_core(router, mostConnections), m_acceptor(m_core.io) {}

    int bind(const std::string& host, int port);
    void run();
    void stop();

  private:
    void listenOn(const net::ip::tcp::endpoint& endpoint, error_code& error);
    void keepAccepting();
    [[nodiscard]] Awaitable<void> accept(std::shared_ptr<bool> sign);
    [[nodiscard]] bool isAccepting() const { return !m_acceptSign.expired(); }
    void begin(Socket socket);
    [[nodiscard]] Awaitable<void> outwait(const error_code& error);
    void endAll();

    ServerCore m_core;
    Acceptor m_acceptor;
    /// Lasts as long as `accept`, which may end without a word where memory is short.
    std::weak_ptr<bool> m_acceptSign;
    bool m_hasComplained = false;
    error_code m_failure;
};

void GatewayServer::Implementation::listenOn(const net::ip::tcp::endpoint& endpoint,
                                             error_code& error) {
    const auto attempt = [&](auto&& step) {
        if (!error) static_cast<void>(step());
    };
    error = {};
    attempt([&] { return m_acceptor.open(endpoint.protocol(), error); });
    // Without SO_REUSEPORT, so that a second gateway on the same port is noticed.
    attempt([&] { return m_acceptor.set_option(Acceptor::reuse_address(true), error); });
    if (endpoint.protocol() == net::ip::tcp::v6()) {
        attempt([&] { return m_acceptor.set_option(net::ip::v6_only(false), error); });
    }
    attempt([&] { return m_acceptor.bind(endpoint, error); });
    attempt([&] { return m_acceptor.listen(Acceptor::max_listen_connections, error); });
    attempt([&] { return m_acceptor.non_blocking(true, error); });
    if (error) {
        error_code ignored;
        static_cast<void>(m_acceptor.close(ignored));
    }
}

int GatewayServer::Implementation::bind(const std::string& host, int port) {
    error_code error;
    Resolver resolver(m_core.io);
    const auto endpoints = resolver.resolve(host, std::to_string(port),
                                            Resolver::passive | Resolver::numeric_service, error);
    for (const auto& entry : endpoints) {
        listenOn(entry.endpoint(), error);
        if (!error) return m_acceptor.local_endpoint().port();
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
            if (isAccepting() || m_core.stopping) {
                m_core.io.run();
                isOver = true;
            } else {
                m_core.io.run_for(kAcceptPause);
                m_core.io.restart();
            }
        } catch (const std::exception& error) {
            // Memory that is short takes the connection in hand, not the server.
            std::fprintf(stderr, "vorq-gateway: a connection failed: %s\n", error.what());
        }
    }
    if (m_failure) {
        throw std::runtime_error(
            filled("The system lets no connection in any more: {}.", m_failure.message()));
    }
}

/// Memory that is short ends `accept`, which has to begin anew then.
void GatewayServer::Implementation::keepAccepting() {
    if (isAccepting() || m_core.stopping) return;
    try {
        auto sign = std::make_shared<bool>(true);
        m_acceptSign = sign;
        net::co_spawn(m_core.io, accept(std::move(sign)), [](const std::exception_ptr& failure) {
            if (failure) std::rethrow_exception(failure);
        });
    } catch (const std::bad_alloc&) {
        static_cast<void>(m_core.room.dismissOldest());
    }
}

Awaitable<void> GatewayServer::Implementation::accept(std::shared_ptr<bool> sign) {
    const std::shared_ptr<bool> kept = std::move(sign);
    while (!m_core.stopping) {
        error_code error;
        Socket socket(m_core.io);
        co_await m_acceptor.async_accept(socket, net::redirect_error(kAwait, error));
        if (m_core.stopping) break;
        if (error) {
            co_await outwait(error);
            continue;
        }
        for (int i = 0; i < kMostAtOnce && !error; ++i) {
            begin(std::move(socket));
            socket = Socket(m_core.io);
            static_cast<void>(m_acceptor.accept(socket, error));
        }
        if (!error) begin(std::move(socket));
        if (error && error != boost::system::errc::operation_would_block) co_await outwait(error);
    }
}

void GatewayServer::Implementation::begin(Socket socket) {
    try {
        std::make_shared<HttpConnection>(m_core, std::move(socket))->start();
    } catch (const std::bad_alloc&) {
        static_cast<void>(m_core.room.dismissOldest());
    }
}

Awaitable<void> GatewayServer::Implementation::outwait(const error_code& error) {
    if (!isPassing(error)) {
        m_failure = error;
        m_core.stopping = true;
        endAll();
        co_return;
    }
    if (error == boost::system::errc::connection_aborted) co_return;
    if (!std::exchange(m_hasComplained, true)) {
        std::fprintf(stderr, "vorq-gateway: connections have to wait: %s\n",
                     error.message().c_str());
    }
    static_cast<void>(m_core.room.dismissOldest());
    Timer pause(m_core.io, kAcceptPause);
    error_code ignored;
    co_await pause.async_wait(net::redirect_error(kAwait, ignored));
}

void GatewayServer::Implementation::endAll() {
    error_code ignored;
    static_cast<void>(m_acceptor.close(ignored));
    m_core.room.announceStop();
}

void GatewayServer::Implementation::stop() {
    if (!m_core.stopping.exchange(true)) net::post(m_core.io, [this] { endAll(); });
}

GatewayServer::GatewayServer(RequestRouter& router, std::size_t mostConnections)
    : m_implementation(std::make_unique<Implementation>(router, mostConnections)) {}

// Without memory for the word to stop the process had better end.
// NOLINTNEXTLINE(bugprone-exception-escape)
GatewayServer::~GatewayServer() {
    stop();
}

int GatewayServer::bind(const std::string& host, int port) {
    return m_implementation->bind(host, port);
}

void GatewayServer::run() {
    m_implementation->run();
}

void GatewayServer::stop() {
    m_implementation->stop();
}

} // namespace vorq::gateway
