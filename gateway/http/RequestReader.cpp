#include "http/RequestReader.h"

#include "http/ApiError.h"
#include "support/Utf8.h"

#include <boost/asio/redirect_error.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/read.hpp>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace vorq::gateway {
namespace {

namespace http = boost::beast::http;
using boost::system::error_code;

constexpr std::size_t kPiece = std::size_t{64} * 1024;

std::string textOf(boost::beast::string_view view) {
    return {view.data(), view.size()};
}

/// Throws what `error` means while the head or the body is read.
[[noreturn]] void throwFor(const error_code& error, bool inBody) {
    if (error == http::error::header_limit || error == http::error::buffer_overflow) {
        throw ApiError(431, "The request's headers are larger than 64 KB.");
    }
    const bool isMalformed =
        error.category() == make_error_code(http::error::bad_version).category();
    if (!isMalformed || error == http::error::end_of_stream) {
        throw boost::system::system_error(error);
    }
    throw ApiError(400, inBody ? "The request's body could not be read to its end."
                               : "The request is not valid HTTP.");
}

/// All of them: a proxy may add a line of its own to that of its client.
template<typename Message>
std::string forwardedFor(const Message& message) {
    std::string all;
    const auto [begin, end] = message.equal_range("X-Forwarded-For");
    for (auto entry = begin; entry != end; ++entry)
        all += (all.empty() ? "" : ",") + textOf(entry->value());
    return all;
}

} // namespace

RequestReader::RequestReader(Socket& socket, std::function<void(std::size_t)> onGrowth)
    : socket_(socket), onGrowth_(std::move(onGrowth)), buffer_(2 * kLargestHead) {
    parser_.header_limit(static_cast<std::uint32_t>(kLargestHead));
    parser_.body_limit(boost::none); // readBody minds the limit.
}

HttpRequest RequestReader::requestOf() const {
    const auto& message = parser_.get();
    const auto header = [&](http::field name) -> std::optional<std::string> {
        const auto entry = message.find(name);
        if (entry == message.end()) return std::nullopt;
        return textOf(entry->value());
    };
    const std::string target = textOf(message.target());
    HttpRequest request{.method = textOf(message.method_string()),
                        .path = target.substr(0, target.find_first_of("?#")),
                        .host = header(http::field::host),
                        .origin = header(http::field::origin),
                        .contentType = header(http::field::content_type).value_or(""),
                        .authorization = header(http::field::authorization).value_or("")};
    request.forwardedFor = forwardedFor(message);
    if (const auto length = parser_.content_length()) request.contentLength = *length;
    request.hasBody = parser_.chunked() || request.contentLength.value_or(0) > 0;
    error_code ignored;
    const auto peer = socket_.remote_endpoint(ignored);
    if (!ignored) request.remoteAddress = peer.address().to_string();
    return request;
}

bool RequestReader::awaitsMore() const {
    if (isWhole()) return false;
    if (!parser_.is_header_done() || parser_.chunked()) return true;
    return parser_.content_length_remaining().value_or(0) > buffer_.size();
}

Awaitable<HttpRequest> RequestReader::readHead() {
    while (!parser_.is_header_done()) {
        error_code error;
        co_await http::async_read_some(socket_, buffer_, parser_,
                                       net::redirect_error(kAwait, error));
        if (error) throwFor(error, false);
        onGrowth_(buffer_.size());
    }
    const auto& message = parser_.get();
    knowsChunks_ = message.version() >= 11;
    isHeadRequest_ = message.method() == http::verb::head;
    awaitsContinue_ = !isWhole() && buffer_.size() == 0 &&
                      lowered(textOf(message[http::field::expect])) == "100-continue";
    co_return requestOf();
}

Awaitable<void> RequestReader::readBody(std::size_t limit) {
    parser_.eager(true);
    while (!parser_.is_done() && body_.size() <= limit) {
        const std::size_t before = body_.size();
        const std::uint64_t announced = parser_.content_length_remaining().value_or(kPiece);
        const auto room = static_cast<std::size_t>(
            std::min<std::uint64_t>({kPiece, limit + 1 - before, announced}));
        body_.resize(before + room);
        auto& piece = parser_.get().body();
        piece.data = body_.data() + before;
        piece.size = room;
        error_code error;
        // For what came with the head there is nothing to wait for.
        bool isHere = buffer_.size() > 0;
        if (isHere) {
            buffer_.consume(parser_.put(buffer_.data(), error));
            isHere = error != http::error::need_more;
        }
        if (!isHere) {
            co_await http::async_read_some(socket_, buffer_, parser_,
                                           net::redirect_error(kAwait, error));
        }
        body_.resize(before + room - piece.size);
        if (error && error != http::error::need_buffer) throwFor(error, true);
        onGrowth_(body_.size());
    }
}

} // namespace vorq::gateway
