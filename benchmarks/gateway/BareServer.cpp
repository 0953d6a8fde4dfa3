#include "gateway/BareServer.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/chunk_encode.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>
#include <nlohmann/json.hpp>

#include <ctime>
#include <pthread.h>
#include <utility>

namespace vorq::bench {
namespace {

namespace net = gateway::net;
namespace http = boost::beast::http;
using gateway::Awaitable;
using gateway::kAwait;
using gateway::Socket;
using nlohmann::json;

constexpr auto kPiece = "Some words of a reply that grows. ";

std::string event(const json& payload) {
    return "data: " + payload.dump() + "\n\n";
}

} // namespace

BareServer::BareServer(StreamScript script) : m_script(script), m_acceptor(m_io) {
    const net::ip::tcp::endpoint endpoint(net::ip::address_v4::loopback(), 0);
    m_acceptor.open(endpoint.protocol());
    m_acceptor.bind(endpoint);
    m_acceptor.listen();
    net::co_spawn(m_io, accept(), net::detached);
    m_thread = std::thread([this] { m_io.run(); });
}

BareServer::~BareServer() {
    m_io.stop();
    m_thread.join();
}

double BareServer::processorTime() {
    clockid_t clock{};
    timespec time{};
    pthread_getcpuclockid(m_thread.native_handle(), &clock);
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

Awaitable<void> BareServer::accept() {
    while (true) {
        Socket socket(m_io);
        co_await m_acceptor.async_accept(socket, kAwait);
        net::co_spawn(m_io, serve(std::move(socket)), net::detached);
    }
}

Awaitable<void> BareServer::serve(Socket socket) {
    try {
        socket.set_option(net::ip::tcp::no_delay(true));
        boost::beast::flat_buffer buffer;
        http::request<http::string_body> request;
        co_await http::async_read(socket, buffer, request, kAwait);
        if (request.target() == "/v1/chat/completions" || request.target() == "/stream") {
            co_await stream(socket, request.target() != "/stream");
        } else {
            http::response<http::string_body> response{http::status::unauthorized, 11};
            response.set(http::field::content_type, "application/json");
            response.set(http::field::cache_control, "no-store");
            response.set("X-Content-Type-Options", "nosniff");
            response.set(http::field::connection, "close");
            response.body() = json{{"error", "Sign in first."}}.dump();
            response.prepare_payload();
            co_await http::async_write(socket, response, kAwait);
        }
    } catch (const boost::system::system_error&) {
        // The client is gone.
    }
}

Awaitable<void> BareServer::stream(Socket& socket, bool asProvider) {
    http::response<http::empty_body> head{http::status::ok, 11};
    head.set(http::field::content_type, "text/event-stream");
    head.set(http::field::connection, "close");
    head.chunked(true);
    http::response_serializer<http::empty_body> serializer{head};
    co_await http::async_write_header(socket, serializer, kAwait);
    gateway::Timer timer(m_io);
    std::string soFar;
    auto due = std::chrono::steady_clock::now() + m_script.untilFirst;
    for (int i = 0; i < m_script.pieces; ++i, due += m_script.pause) {
        timer.expires_at(due);
        co_await timer.async_wait(kAwait);
        soFar += kPiece;
        const std::string piece = asProvider
                                      ? event({{"choices", {{{"delta", {{"content", kPiece}}}}}}})
                                      : event({{"text", soFar}});
        co_await net::async_write(socket, http::make_chunk(net::buffer(piece)), kAwait);
    }
    const std::string last = asProvider
                                 ? std::string("data: [DONE]\n\n")
                                 : event({{"text", soFar}, {"summary", soFar}, {"done", true}});
    co_await net::async_write(socket, http::make_chunk(net::buffer(last)), kAwait);
    co_await net::async_write(socket, http::make_chunk_last(), kAwait);
}

} // namespace vorq::bench
