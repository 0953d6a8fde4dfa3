#pragma once

#include "engine/Engine.h"
#include "support/SteadyTime.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace vorq::gateway {

/// What is to be sent next of a reply.
struct FeedStep {
    /// Empty if there is nothing to send yet.
    std::string bytes = {};
    bool isLast = false;
    /// If there is nothing: when to ask again though nobody called for it.
    SteadyTime again = SteadyTime::max();
};

/// Turns a reply on its way into the bytes of an answer, and fills the time until it has something
/// to say, so that the client knows that all is well. Waits for nothing; used by one thread at a
/// time.
class ReplyFeed {
  public:
    /// How long a client hears nothing at most.
    static constexpr std::chrono::seconds kHeartbeat{10};

    explicit ReplyFeed(std::unique_ptr<ReplyStream> reply) : m_reply(std::move(reply)) {}
    virtual ~ReplyFeed() = default;

    /// See ReplyStream.
    void setCaller(const std::function<void()>& call) { m_reply->setCaller(call); }
    [[nodiscard]] virtual const char* contentType() const = 0;
    /// Whether the head goes out before there is anything of the reply.
    [[nodiscard]] virtual bool beginsAtOnce() const = 0;
    /// May throw what the engine throws, as long as nothing has gone out.
    [[nodiscard]] virtual FeedStep next(SteadyTime now) = 0;
    /// The last bytes of a server that stops; empty if nothing has gone out.
    [[nodiscard]] virtual std::string stopped() const = 0;
    /// Whether the next step may take long enough to be felt by others.
    [[nodiscard]] bool isLarge() const { return m_size > kLarge; }

  protected:
    [[nodiscard]] ReplyStep stepReply(SteadyTime now) {
        ReplyStep step = m_reply->step(now);
        if (step.kind == ReplyStep::Kind::Grew) m_size = step.text.size();
        return step;
    }
    [[nodiscard]] FinishedReply result() { return m_reply->result(); }

  private:
    static constexpr std::size_t kLarge = std::size_t{64} * 1024;

    std::unique_ptr<ReplyStream> m_reply;
    std::size_t m_size = 0;
};

} // namespace vorq::gateway
