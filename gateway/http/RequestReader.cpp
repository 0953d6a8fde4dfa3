#include "http/RequestReader.h"

#include "support/ApiError.h"
#include "support/Filled.h"
#include "support/Utf8.h"

#include <boost/asio/redirect_error.hpp>
#include <boost/beast/http/error.hpp>

#include <algorithm>
#include <array>
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

std::string queryOf(const std::string& target) {
    const std::string whole = target.substr(0, target.find('#'));
    const std::size_t question = whole.find('?');
    return question == std::string::npos ? std::string() : whole.substr(question + 1);
}

template<typename Message>
bool isForwarded(const Message& message) {
    constexpr std::array names = {"Forwarded", "X-Forwarded-For", "X-Forwarded-Host", "X-Real-IP",
                                  "Via"};
    return std::ranges::any_of(names, [&](const char* name) { return message.count(name) > 0; });
}

/// Of two lines the one may be read here and the other by a proxy in front.
template<typename Message>
void checkSingle(const Message& message) {
    for (const http::field name : {http::field::host, http::field::origin, http::field::cookie,
                                   http::field::content_type, http::field::authorization}) {
        if (message.count(name) > 1) {
            throw ApiError(
                400, filled("The request has the header {} twice.", textOf(http::to_string(name))));
        }
    }
}

/// Empty once the connection is gone.
SocketEnd endOf(const error_code& error, const net::ip::tcp::endpoint& endpoint) {
    if (error) return {};
    return {endpoint.address().to_string(), endpoint.port()};
}

} // namespace

RequestReader::RequestReader(Socket& socket, std::function<void(std::size_t)> onGrowth)
    : m_socket(socket), m_onGrowth(std::move(onGrowth)), m_buffer(4 * kLargestHead) {
    m_parser.header_limit(static_cast<std::uint32_t>(kLargestHead));
    m_parser.body_limit(boost::none); // readBody minds the limit.
}

HttpRequest RequestReader::requestOf() const {
    const auto& message = m_parser.get();
    const auto header = [&](http::field name) -> std::optional<std::string> {
        const auto entry = message.find(name);
        if (entry == message.end()) return std::nullopt;
        return textOf(entry->value());
    };
    const auto textIn = [&](http::field name) { return header(name).value_or(""); };
    const std::string target = textOf(message.target());
    HttpRequest request{.method = textOf(message.method_string()),
                        .path = target.substr(0, target.find_first_of("?#")),
                        .host = header(http::field::host),
                        .origin = header(http::field::origin),
                        .contentType = textIn(http::field::content_type),
                        .authorization = textIn(http::field::authorization)};
    request.forwardedFor = forwardedFor(message);
    request.query = queryOf(target);
    request.cookie = textIn(http::field::cookie);
    request.userAgent = textIn(http::field::user_agent);
    request.fetchSite = lowered(textOf(message["Sec-Fetch-Site"]));
    request.acceptsPages = lowered(textIn(http::field::accept)).contains("text/html");
    request.isForwarded = isForwarded(message);
    if (const auto length = m_parser.content_length()) request.contentLength = *length;
    request.hasBody = m_parser.chunked() || request.contentLength.value_or(0) > 0;
    error_code error;
    const net::ip::tcp::endpoint peer = m_socket.remote_endpoint(error);
    request.peer = endOf(error, peer);
    const net::ip::tcp::endpoint own = m_socket.local_endpoint(error);
    request.own = endOf(error, own);
    request.remoteAddress = request.peer.address;
    return request;
}

bool RequestReader::awaitsMore() const {
    if (isWhole()) return false;
    if (!m_parser.is_header_done() || m_parser.chunked()) return true;
    return m_parser.content_length_remaining().value_or(0) > m_buffer.size();
}

Awaitable<void> RequestReader::receive(std::size_t room, bool inBody) {
    const bool hasBegun = inBody || m_headBytes + m_buffer.size() > 0;
    error_code error;
    m_buffer.commit(co_await m_socket.async_read_some(m_buffer.prepare(room),
                                                      net::redirect_error(kAwait, error)));
    if (error == net::error::eof && hasBegun) error = http::error::partial_message;
    if (error) throwFor(error, inBody);
    m_onGrowth(m_headBytes + m_buffer.size() + m_body.size());
}

void RequestReader::parseHead() {
    error_code error;
    const std::size_t size = m_parser.put(m_buffer.data(), error);
    m_headBytes += size;
    m_buffer.consume(size);
    if (error && error != http::error::need_more) throwFor(error, false);
    // The parser minds its limit for the lines that it has yet to read only.
    const std::size_t unread = m_parser.is_header_done() ? 0 : m_buffer.size();
    if (m_headBytes + unread > kLargestHead) throwFor(http::error::header_limit, false);
    // A short line takes far more memory as a header than on its way.
    auto& message = m_parser.get();
    if (std::distance(message.begin(), message.end()) > kMostHeaders) {
        message.clear();
        throw ApiError(431, filled("The request has more than {} headers.", kMostHeaders));
    }
}

Awaitable<HttpRequest> RequestReader::readHead() {
    while (!m_parser.is_header_done()) {
        co_await receive(kHeadPiece, false);
        parseHead();
    }
    auto& message = m_parser.get();
    m_knowsChunks = message.version() >= 11;
    m_isHeadRequest = message.method() == http::verb::head;
    m_awaitsContinue = !isWhole() && m_buffer.size() == 0 &&
                       lowered(textOf(message[http::field::expect])) == "100-continue";
    checkSingle(message);
    HttpRequest request = requestOf();
    message.clear();
    if (m_buffer.capacity() > kSmallPiece) m_buffer.shrink_to_fit();
    co_return request;
}

Awaitable<void> RequestReader::readBody(std::size_t limit) {
    m_parser.eager(true);
    const std::size_t room = limit > kLargestHead ? kPiece : kSmallPiece;
    bool mustRead = m_buffer.size() == 0;
    while (!m_parser.is_done() && m_body.size() <= limit) {
        if (mustRead) co_await receive(room, true);
        mustRead = !parseBody(limit) || m_buffer.size() == 0;
    }
}

bool RequestReader::parseBody(std::size_t limit) {
    const std::size_t before = m_body.size();
    const std::size_t room = std::min(m_buffer.size(), limit + 1 - before);
    m_body.resize(before + room);
    auto& piece = m_parser.get().body();
    piece.data = m_body.data() + before;
    piece.size = room;
    error_code error;
    m_buffer.consume(m_parser.put(m_buffer.data(), error));
    m_body.resize(before + room - piece.size);
    const bool needsMore = error == http::error::need_more;
    if (error && !needsMore && error != http::error::need_buffer) throwFor(error, true);
    if (needsMore && m_buffer.size() > kLargestHead) throwFor(http::error::header_limit, true);
    m_parser.get().clear(); // Of trailers, for which nobody asks.
    return !needsMore;
}

} // namespace vorq::gateway
