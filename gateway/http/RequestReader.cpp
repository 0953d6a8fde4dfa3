#include "http/RequestReader.h"

#include "support/ApiError.h"
#include "support/Filled.h"
#include "support/Utf8.h"

#include <boost/asio/redirect_error.hpp>
#include <boost/beast/http/error.hpp>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>

namespace vorq::gateway {
namespace {

namespace http = boost::beast::http;
using boost::system::error_code;

/// What is read at once: of a head, of a body that strangers may send, and of others. Half requests
/// are many, and those of strangers have to be cheap.
constexpr std::size_t kHeadPiece = 1024;
constexpr std::size_t kSmallPiece = std::size_t{4} * 1024;
constexpr std::size_t kPiece = std::size_t{64} * 1024;

std::string textOf(boost::beast::string_view view) {
    return {view.data(), view.size()};
}

/// Throws what `error` means while the head or the body is read.
[[noreturn]] void throwFor(const error_code& error, bool inBody) {
    if (error == http::error::header_limit && inBody) {
        throw ApiError(400,
                       "The trailers or a chunk line of the request's body are larger than 64 KB.");
    }
    if (error == http::error::header_limit) {
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
    : socket_(socket), onGrowth_(std::move(onGrowth)), buffer_(4 * kLargestHead) {
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

Awaitable<void> RequestReader::receive(std::size_t room, bool inBody) {
    const bool hasBegun = inBody || headBytes_ + buffer_.size() > 0;
    error_code error;
    buffer_.commit(co_await socket_.async_read_some(buffer_.prepare(room),
                                                    net::redirect_error(kAwait, error)));
    if (error == net::error::eof && hasBegun) error = http::error::partial_message;
    if (error) throwFor(error, inBody);
    onGrowth_(headBytes_ + buffer_.size() + body_.size());
}

void RequestReader::parseHead() {
    error_code error;
    const std::size_t size = parser_.put(buffer_.data(), error);
    headBytes_ += size;
    buffer_.consume(size);
    if (error && error != http::error::need_more) throwFor(error, false);
    // The parser minds its limit for the lines that it has yet to read only.
    const std::size_t unread = parser_.is_header_done() ? 0 : buffer_.size();
    if (headBytes_ + unread > kLargestHead) throwFor(http::error::header_limit, false);
    // A short line takes far more memory as a header than on its way.
    auto& message = parser_.get();
    if (std::distance(message.begin(), message.end()) > kMostHeaders) {
        message.clear();
        throw ApiError(431, filled("The request has more than {} headers.", kMostHeaders));
    }
}

Awaitable<HttpRequest> RequestReader::readHead() {
    while (!parser_.is_header_done()) {
        co_await receive(kHeadPiece, false);
        parseHead();
    }
    auto& message = parser_.get();
    knowsChunks_ = message.version() >= 11;
    isHeadRequest_ = message.method() == http::verb::head;
    awaitsContinue_ = !isWhole() && buffer_.size() == 0 &&
                      lowered(textOf(message[http::field::expect])) == "100-continue";
    HttpRequest request = requestOf();
    message.clear();
    if (buffer_.capacity() > kSmallPiece) buffer_.shrink_to_fit();
    co_return request;
}

Awaitable<void> RequestReader::readBody(std::size_t limit) {
    parser_.eager(true);
    const std::size_t room = limit > kLargestHead ? kPiece : kSmallPiece;
    bool mustRead = buffer_.size() == 0;
    while (!parser_.is_done() && body_.size() <= limit) {
        if (mustRead) co_await receive(room, true);
        mustRead = !parseBody(limit) || buffer_.size() == 0;
    }
}

bool RequestReader::parseBody(std::size_t limit) {
    const std::size_t before = body_.size();
    const std::size_t room = std::min(buffer_.size(), limit + 1 - before);
    body_.resize(before + room);
    auto& piece = parser_.get().body();
    piece.data = body_.data() + before;
    piece.size = room;
    error_code error;
    buffer_.consume(parser_.put(buffer_.data(), error));
    body_.resize(before + room - piece.size);
    const bool needsMore = error == http::error::need_more;
    if (error && !needsMore && error != http::error::need_buffer) throwFor(error, true);
    if (needsMore && buffer_.size() > kLargestHead) throwFor(http::error::header_limit, true);
    parser_.get().clear(); // Of trailers, for which nobody asks.
    return !needsMore;
}

} // namespace vorq::gateway
