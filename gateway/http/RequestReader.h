#pragma once

#include "http/Api.h"
#include "http/Asio.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/buffer_body.hpp>
#include <boost/beast/http/parser.hpp>

#include <cstddef>
#include <functional>
#include <string>

namespace vorq::gateway {

/// Reads one request from a socket. Throws ApiError for what is no proper request, and
/// boost::system::system_error once the connection is of no use.
class RequestReader {
  public:
    static constexpr std::size_t kLargestHead = std::size_t{64} * 1024;
    static constexpr std::ptrdiff_t kMostHeaders = 100;

    /// `onGrowth` hears how many bytes of the request are held.
    RequestReader(Socket& socket, std::function<void(std::size_t)> onGrowth);

    /// Everything before the body.
    [[nodiscard]] Awaitable<HttpRequest> readHead();
    /// Goes on with the body until it is whole or longer than `limit`.
    [[nodiscard]] Awaitable<void> readBody(std::size_t limit);

    [[nodiscard]] bool isWhole() const { return m_parser.is_done(); }
    /// Whether bytes of the request may still be on their way.
    [[nodiscard]] bool awaitsMore() const;
    /// Whether the client waits for a word before it sends its body.
    [[nodiscard]] bool awaitsContinue() const { return m_awaitsContinue; }
    /// False for a client of HTTP/1.0, which knows no chunks.
    [[nodiscard]] bool knowsChunks() const { return m_knowsChunks; }
    [[nodiscard]] bool isHeadRequest() const { return m_isHeadRequest; }
    [[nodiscard]] std::string takeBody() { return std::move(m_body); }

  private:
    [[nodiscard]] HttpRequest requestOf() const;
    /// Waits until the buffer has grown, by no more than `room` bytes.
    [[nodiscard]] Awaitable<void> receive(std::size_t room, bool inBody);
    void parseHead();
    /// False if more has to come first.
    [[nodiscard]] bool parseBody(std::size_t limit);

    Socket& m_socket;
    std::function<void(std::size_t)> m_onGrowth;
    boost::beast::flat_buffer m_buffer;
    boost::beast::http::request_parser<boost::beast::http::buffer_body> m_parser;
    std::string m_body;
    std::size_t m_headBytes = 0;
    bool m_awaitsContinue = false;
    bool m_knowsChunks = true;
    bool m_isHeadRequest = false;
};

} // namespace vorq::gateway
