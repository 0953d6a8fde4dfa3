#pragma once

#include "http/Asio.h"
#include "http/Refusal.h"
#include "http/ReplyFeed.h"
#include "http/RequestReader.h"
#include "http/ServerCore.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace vorq::gateway {

/// One accepted socket, from its request to the end of its answer. Lives as long as its coroutine,
/// on the thread of the core's io_context.
class HttpConnection final : public Guest, public std::enable_shared_from_this<HttpConnection> {
  public:
    /// `core` outlives the connection.
    HttpConnection(ServerCore& core, Socket socket);
    ~HttpConnection() override;
    HttpConnection(const HttpConnection&) = delete;
    HttpConnection& operator=(const HttpConnection&) = delete;

    void start();
    void dismiss() override { close(); }
    void hearStop() override;

  private:
    enum class Phase { Receiving, Working, Finishing };
    /// What others than the server's thread may hold: the connection may be gone when they call.
    struct Rope {
        HttpConnection* connection;
        std::atomic<bool> isPulled = false;
        alignas(std::max_align_t) std::array<std::byte, 256> word{};
    };

    static Awaitable<void> run(std::shared_ptr<HttpConnection> self);
    using Outcome = std::variant<ApiReply, Refusal>;

    [[nodiscard]] Awaitable<void> answer();
    [[nodiscard]] Awaitable<Outcome> obtainReply();
    [[nodiscard]] Awaitable<Outcome> work(const Route& route, const HttpRequest& request,
                                          std::optional<Identity> identity);
    [[nodiscard]] Awaitable<void> passGate(const StartGate::Visitor& visitor);
    [[nodiscard]] Awaitable<void> receiveBody(const HttpRequest& request, const Route& route,
                                              std::optional<Identity>& identity);
    [[nodiscard]] Awaitable<void> takeRoomForLargeBody(const HttpRequest& request);
    [[nodiscard]] Awaitable<void> sendContinue();
    void giveRoomBack();
    [[nodiscard]] Awaitable<void> sendFeed(ReplyFeed& feed);
    /// Nothing if the server stops before.
    [[nodiscard]] Awaitable<std::optional<FeedStep>> nextStep(ReplyFeed& feed);
    [[nodiscard]] Awaitable<void> sendLastWord(const ReplyFeed& feed);
    [[nodiscard]] Awaitable<void> sendHead(const char* contentType);
    [[nodiscard]] Awaitable<void> sendPiece(const std::string& bytes, bool isLast);
    [[nodiscard]] Awaitable<void> sendAnswer(HttpAnswer answer);
    [[nodiscard]] Awaitable<void> sendRefusal(const Refusal& refusal);
    [[nodiscard]] Awaitable<void> finish();

    /// Runs `work` on a thread of the pool and gives its result.
    template<typename Work>
    [[nodiscard]] Awaitable<std::invoke_result_t<Work&>> onPool(WorkerPool& pool, Work work);
    static void wake(ServerCore& core, const std::shared_ptr<Rope>& rope);
    /// Until `ring` or `time`.
    [[nodiscard]] Awaitable<void> waitUntil(SteadyTime time);
    void ring();
    /// Rings from any thread.
    [[nodiscard]] std::function<void()> bellRope();
    /// Closes the connection unless `relax` or another `allow` comes in time.
    void allow(std::chrono::milliseconds time);
    void allowWrite();
    void relax() { m_deadline.cancel(); }
    void watchPeer();
    void close();

    ServerCore& m_core;
    Socket m_socket;
    Timer m_bell;
    Timer m_deadline;
    RequestReader m_reader;
    Phase m_phase = Phase::Receiving;
    std::shared_ptr<Rope> m_rope;
    bool m_rung = false;
    bool m_hasHeard = false;
    bool m_isWriting = false;
    bool m_headSent = false;
    bool m_wantsPage = false;
    bool m_isWatching = false;
    /// The client closed its end; one that still waits for an answer never does.
    bool m_peerLeft = false;
    std::size_t m_discarded = 0;
    std::size_t m_largeBytes = 0;
    bool m_wasLarge = false;
    std::array<char, 512> m_discard{};
};

} // namespace vorq::gateway
