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

    [[nodiscard]] bool isWhole() const { return parser_.is_done(); }
    /// Whether bytes of the request may still be on their way.
    [[nodiscard]] bool awaitsMore() const;
    /// Whether the client waits for a word before it sends its body.
    [[nodiscard]] bool awaitsContinue() const { return awaitsContinue_; }
    /// False for a client of HTTP/1.0, which knows no chunks.
    [[nodiscard]] bool knowsChunks() const { return knowsChunks_; }
    [[nodiscard]] bool isHeadRequest() const { return isHeadRequest_; }
    [[nodiscard]] std::string takeBody() { return std::move(body_); }

  private:
    [[nodiscard]] HttpRequest requestOf() const;
    /// Waits until the buffer has grown, by no more than `room` bytes.
    [[nodiscard]] Awaitable<void> receive(std::size_t room, bool inBody);
    void parseHead();
    /// False if more has to come first.
    [[nodiscard]] bool parseBody(std::size_t limit);

    Socket& socket_;
    std::function<void(std::size_t)> onGrowth_;
    boost::beast::flat_buffer buffer_;
    boost::beast::http::request_parser<boost::beast::http::buffer_body> parser_;
    std::string body_;
    std::size_t headBytes_ = 0;
    bool awaitsContinue_ = false;
    bool knowsChunks_ = true;
    bool isHeadRequest_ = false;
};

} // namespace vorq::gateway
