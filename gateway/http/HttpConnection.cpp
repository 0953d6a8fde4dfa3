#include "http/HttpConnection.h"

#include "http/JsonText.h"
#include "http/ResponseHead.h"
#include "http/RopeAllocator.h"
#include "support/ApiError.h"
#include "support/Cancellation.h"
#include "support/ProcessLimits.h"

#include <boost/asio/bind_allocator.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/buffers_cat.hpp>
#include <boost/beast/http/chunk_encode.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>

#include <algorithm>
#include <new>
#include <thread>
#include <type_traits>
#include <utility>

namespace vorq::gateway {
namespace {

namespace beast = boost::beast;
namespace http = boost::beast::http;
using boost::system::error_code;
using std::chrono::milliseconds;
using std::chrono::seconds;
using Steady = std::chrono::steady_clock;

// A connection that was opened in advance may stay silent, though not for long.
constexpr seconds kFirstByteTime{10};
constexpr seconds kRequestTime{60};
constexpr seconds kWriteTime{60};
constexpr seconds kFinishTime{1};
constexpr milliseconds kRoomPoll{50};
constexpr milliseconds kMemoryPause{10};
constexpr std::size_t kMostDiscarded = std::size_t{64} * 1024 * 1024;
constexpr std::size_t kSmallBody = RequestRouter::kLargestStrangersBody;

} // namespace

HttpConnection::HttpConnection(ServerCore& core, Socket socket)
    : m_core(core),
      m_socket(std::move(socket)),
      m_bell(core.io),
      m_deadline(core.io),
      m_reader(m_socket,
               [this](std::size_t held) {
                   if (!std::exchange(m_hasHeard, true)) allow(kRequestTime);
                   m_core.room.setBytes(*this, held);
               }),
      m_rope(std::make_shared<Rope>(this)) {}

HttpConnection::~HttpConnection() {
    m_rope->connection = nullptr;
    giveRoomBack();
    m_core.room.leave(*this);
}

void HttpConnection::start() {
    error_code ignored;
    static_cast<void>(m_socket.set_option(net::ip::tcp::no_delay(true), ignored));
    m_core.room.enter(*this);
    allow(kFirstByteTime);
    net::co_spawn(m_core.io, run(shared_from_this()), net::detached);
}

void HttpConnection::hearStop() {
    if (m_phase == Phase::Receiving) close();
    if (m_isWriting) allow(kFinishTime);
    ring();
}

Awaitable<void> HttpConnection::run(std::shared_ptr<HttpConnection> self) {
    try {
        co_await self->answer();
        co_await self->finish();
    } catch (const boost::system::system_error&) {
        self->m_peerLeft = true;
    } catch (const std::exception&) {
        static_cast<void>(refusalFor(std::current_exception()));
    }
    self->close();
    if (self->m_wasLarge) static_cast<void>(self->m_core.computing.submit(trimHeap));
}

Awaitable<void> HttpConnection::answer() {
    std::exception_ptr failure;
    try {
        const Outcome outcome = co_await obtainReply();
        if (const auto* refusal = std::get_if<Refusal>(&outcome)) {
            co_await sendRefusal(*refusal);
        } else if (const auto& reply = std::get<ApiReply>(outcome); reply.stream) {
            co_await sendFeed(*reply.stream);
        } else {
            co_await sendAnswer(reply.answer.value_or(HttpAnswer{.body = oneLineJson(reply.body)}));
        }
    } catch (const boost::system::system_error&) {
        throw;
    } catch (const std::exception&) {
        failure = std::current_exception();
    }
    if (failure) co_await sendRefusal(refusalFor(failure));
}

/// The common refusals come out as values: an exception is thrown anew in each coroutine it passes.
Awaitable<HttpConnection::Outcome> HttpConnection::obtainReply() {
    const HttpRequest request = co_await m_reader.readHead();
    m_wantsPage = m_core.router.wantsPage(request);
    const Route* route = nullptr;
    try {
        route = &m_core.router.screen(request);
    } catch (const ApiError&) {
        Refusal refusal = refusalFor(std::current_exception());
        if (refusal.status == 405)
            refusal.allowedMethods = m_core.router.allowedMethods(request.path);
        co_return refusal;
    }
    std::optional<Identity> identity;
    co_await receiveBody(request, *route, identity);
    m_core.room.settle(*this);
    m_phase = Phase::Working;
    relax();
    if (!route->startsReply) co_return co_await work(*route, request, std::move(identity));
    watchPeer();
    const StartGate::Visitor visitor(m_core.starts, [this] { ring(); });
    co_await passGate(visitor);
    co_return co_await work(*route, request, std::move(identity));
}

Awaitable<void> HttpConnection::passGate(const StartGate::Visitor& visitor) {
    while (!visitor.isInside()) {
        if (m_core.stopping || m_peerLeft) throw CancelledError();
        co_await waitUntil(SteadyTime::max());
    }
}

Awaitable<HttpConnection::Outcome> HttpConnection::work(const Route& route,
                                                        const HttpRequest& request,
                                                        std::optional<Identity> identity) {
    std::string body = m_reader.takeBody();
    const bool computes = (route.computes && route.computes()) || body.size() > kSmallBody;
    WorkerPool& pool = route.hashes ? m_core.hashing
                       : computes   ? m_core.computing
                                    : m_core.accounts;
    const auto identify = [&] {
        if (!identity) identity = m_core.router.identify(route, request);
        return true;
    };
    if (&pool != &m_core.accounts) co_await onPool(m_core.accounts, identify);
    Outcome outcome = co_await onPool(pool, [&]() -> Outcome {
        try {
            identify();
            return m_core.router.answer(route, request, std::move(identity), std::move(body),
                                        [this] { giveRoomBack(); });
        } catch (...) {
            return refusalFor(std::current_exception());
        }
    });
    giveRoomBack();
    co_return outcome;
}

/// Strangers may send little. Only a sender that is known gets room for more.
Awaitable<void> HttpConnection::receiveBody(const HttpRequest& request, const Route& route,
                                            std::optional<Identity>& identity) {
    const std::size_t limit = route.largestBody();
    const std::uint64_t announced = request.contentLength.value_or(0);
    if (announced > limit && !route.needsToken) throw RequestRouter::tooLarge(route);
    if (announced <= kSmallBody) {
        if (m_reader.awaitsContinue()) co_await sendContinue();
        co_await m_reader.readBody(kSmallBody);
        if (m_reader.isWhole()) co_return;
    }
    if (!route.needsToken) throw RequestRouter::tooLarge(route);
    co_await onPool(m_core.accounts, [&] {
        identity = m_core.router.identify(route, request);
        return true;
    });
    if (announced > limit) throw RequestRouter::tooLarge(route);
    co_await takeRoomForLargeBody(request);
    m_core.room.settle(*this);
    if (m_reader.awaitsContinue() && announced > kSmallBody) co_await sendContinue();
    co_await m_reader.readBody(limit);
    if (!m_reader.isWhole()) throw RequestRouter::tooLarge(route);
}

Awaitable<void> HttpConnection::sendContinue() {
    constexpr std::string_view word = "HTTP/1.1 100 Continue\r\n\r\n";
    co_await net::async_write(m_socket, net::buffer(word), kAwait);
}

Awaitable<void> HttpConnection::takeRoomForLargeBody(const HttpRequest& request) {
    const std::size_t bytes = request.contentLength.value_or(RequestRouter::kLargestBody);
    while (m_core.largeBytes + bytes > ServerCore::kMostLargeBytes) {
        if (!m_socket.is_open()) throw boost::system::system_error(net::error::operation_aborted);
        co_await waitUntil(Steady::now() + kRoomPoll);
    }
    m_core.largeBytes += bytes;
    m_largeBytes = bytes;
    m_wasLarge = true;
}

void HttpConnection::giveRoomBack() {
    m_core.largeBytes -= std::exchange(m_largeBytes, 0);
}

Awaitable<void> HttpConnection::sendFeed(ReplyFeed& feed) {
    feed.setCaller(bellRope());
    if (feed.beginsAtOnce()) co_await sendHead(feed.contentType());
    while (!m_peerLeft) {
        if (m_core.stopping) {
            co_await sendLastWord(feed);
            co_return;
        }
        const std::optional<FeedStep> step = co_await nextStep(feed);
        if (!step) continue;
        if (step->bytes.empty()) {
            co_await waitUntil(step->again);
            continue;
        }
        if (step->isLast && !m_headSent) {
            co_await sendAnswer({.contentType = feed.contentType(), .body = step->bytes});
        } else {
            if (!m_headSent) co_await sendHead(feed.contentType());
            co_await sendPiece(step->bytes, step->isLast);
        }
        if (step->isLast) co_return;
    }
}

Awaitable<std::optional<FeedStep>> HttpConnection::nextStep(ReplyFeed& feed) {
    if (!feed.isLarge()) co_return feed.next(Steady::now());
    try {
        co_return co_await onPool(m_core.computing, [&feed] { return feed.next(Steady::now()); });
    } catch (const CancelledError&) {
        co_return std::nullopt;
    }
}

Awaitable<void> HttpConnection::sendLastWord(const ReplyFeed& feed) {
    const std::string word = feed.stopped();
    if (word.empty()) throw CancelledError();
    co_await sendPiece(word, true);
}

Awaitable<void> HttpConnection::sendHead(const char* contentType) {
    http::response<http::empty_body> head{http::status::ok, 11};
    setFields(head.base(), contentType);
    head.chunked(m_reader.knowsChunks());
    http::response_serializer<http::empty_body> serializer{head};
    allowWrite();
    m_headSent = true;
    co_await http::async_write_header(m_socket, serializer, kAwait);
    m_isWriting = false;
    relax();
}

Awaitable<void> HttpConnection::sendPiece(const std::string& bytes, bool isLast) {
    allowWrite();
    const net::const_buffer buffer = net::buffer(bytes);
    if (!m_reader.knowsChunks()) {
        co_await net::async_write(m_socket, buffer, kAwait);
    } else if (isLast) {
        co_await net::async_write(
            m_socket, beast::buffers_cat(http::make_chunk(buffer), http::make_chunk_last()),
            kAwait);
    } else {
        co_await net::async_write(m_socket, http::make_chunk(buffer), kAwait);
    }
    m_isWriting = false;
    relax();
}

Awaitable<void> HttpConnection::sendAnswer(HttpAnswer answer) {
    http::response<http::string_body> response{static_cast<http::status>(answer.status), 11};
    setFields(response.base(), answer);
    response.content_length(answer.body.size());
    if (!m_reader.isHeadRequest()) response.body() = std::move(answer.body);
    allowWrite();
    m_headSent = true;
    co_await http::async_write(m_socket, response, kAwait);
    m_isWriting = false;
    relax();
}

Awaitable<void> HttpConnection::sendRefusal(const Refusal& refusal) {
    if (m_headSent) co_return; // The answer is cut, which says that it is not whole.
    co_await sendAnswer(answerFor(refusal, m_wantsPage));
}

/// Lets a client read its answer though it is still sending a request that nobody reads.
Awaitable<void> HttpConnection::finish() {
    m_phase = Phase::Finishing;
    m_core.room.settle(*this);
    error_code ignored;
    static_cast<void>(m_socket.shutdown(Socket::shutdown_send, ignored));
    if (!m_reader.awaitsMore()) co_return;
    watchPeer();
    const SteadyTime end = Steady::now() + kFinishTime;
    while (!m_peerLeft && Steady::now() < end)
        co_await waitUntil(end);
}

/// Wakes the connection from any thread, which does not count as a ring. Memory that is short is
/// waited for: without this word the connection would never go on.
void HttpConnection::wake(ServerCore& core, const std::shared_ptr<Rope>& rope) {
    while (true) {
        try {
            net::post(core.io, [rope] {
                if (rope->connection != nullptr) rope->connection->m_bell.cancel();
            });
            return;
        } catch (const std::bad_alloc&) {
            std::this_thread::sleep_for(kMemoryPause);
        }
    }
}

template<typename Work>
Awaitable<std::invoke_result_t<Work&>> HttpConnection::onPool(WorkerPool& pool, Work work) {
    struct Outcome {
        std::optional<std::invoke_result_t<Work&>> result;
        std::exception_ptr failure;
        std::atomic<bool> isDone = false;
    };
    // The coroutine and all it holds stay until the job is done.
    Outcome outcome;
    const bool isTaken = pool.submit([&core = m_core, rope = m_rope, &outcome, &work] {
        try {
            if (core.stopping) throw CancelledError();
            outcome.result.emplace(work());
        } catch (...) {
            outcome.failure = std::current_exception();
        }
        outcome.isDone = true; // From here on the coroutine may be gone.
        wake(core, rope);
    });
    if (!isTaken) throw ApiError(503, "The Vorq gateway is busy. Try again in a moment.");
    while (!outcome.isDone) {
        try {
            m_bell.expires_at(SteadyTime::max());
            error_code ignored;
            co_await m_bell.async_wait(net::redirect_error(kAwait, ignored));
        } catch (const std::bad_alloc&) {
            while (!outcome.isDone)
                std::this_thread::sleep_for(kMemoryPause);
        }
    }
    if (outcome.failure || !outcome.result) std::rethrow_exception(outcome.failure);
    co_return std::move(*outcome.result);
}

Awaitable<void> HttpConnection::waitUntil(SteadyTime time) {
    if (!m_rung) {
        m_bell.expires_at(time);
        error_code ignored;
        co_await m_bell.async_wait(net::redirect_error(kAwait, ignored));
    }
    m_rung = false;
}

void HttpConnection::ring() {
    m_rung = true;
    m_bell.cancel();
}

std::function<void()> HttpConnection::bellRope() {
    return [rope = m_rope, &io = m_core.io] {
        if (rope->isPulled.exchange(true)) return;
        // Whoever pulls could do nothing about memory that is short.
        net::post(io, net::bind_allocator(RopeAllocator<char>(rope->word), [rope] {
                      rope->isPulled = false;
                      if (rope->connection != nullptr) rope->connection->ring();
                  }));
    };
}

void HttpConnection::allow(milliseconds time) {
    m_deadline.expires_after(time);
    m_deadline.async_wait([self = shared_from_this()](const error_code& error) {
        if (!error && self->m_deadline.expiry() <= Steady::now()) self->close();
    });
}

void HttpConnection::allowWrite() {
    m_isWriting = true;
    allow(m_core.stopping ? kFinishTime : kWriteTime);
}

void HttpConnection::watchPeer() {
    if (std::exchange(m_isWatching, true)) return;
    m_socket.async_read_some(net::buffer(m_discard),
                             [self = shared_from_this()](const error_code& error, std::size_t n) {
                                 self->m_isWatching = false;
                                 self->m_discarded += n;
                                 if (error || self->m_discarded > kMostDiscarded) {
                                     self->m_peerLeft = true;
                                     self->ring();
                                 } else {
                                     self->watchPeer();
                                 }
                             });
}

void HttpConnection::close() {
    error_code ignored;
    static_cast<void>(m_socket.close(ignored));
    relax();
    ring();
}

} // namespace vorq::gateway
