#include "provider/ProviderStream.h"

#include "provider/ProviderError.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace vorq::gateway {
namespace {

using nlohmann::json;

// Each step carries the whole reply so far, so steps closer together would only repeat it.
constexpr std::chrono::milliseconds kStepInterval{40};
// How long a connection may stay open without a word behind a finished reply.
constexpr std::chrono::milliseconds kFinishGrace{2'000};

} // namespace

ProviderStream::ProviderStream(TransferLoop& loop, const ProviderConfig& config, const json& body,
                               ReplyParser parser)
    : config_(config),
      transfer_(loop, config, body.dump(-1, ' ', false, json::error_handler_t::replace)),
      parser_(std::move(parser)) {}

void ProviderStream::setCaller(const std::function<void()>& call) {
    transfer_.setCaller(call);
}

ReplyStep ProviderStream::step(SteadyTime now) {
    try {
        return next(now);
    } catch (const EngineError& error) {
        throw EngineError(error.status, withoutKey(config_, error.what()));
    }
}

ReplyStep ProviderStream::next(SteadyTime now) {
    readArrived(now);
    const bool isDue = finished_ || now >= quietUntil_;
    if (isDue && showsSomethingNew()) {
        quietUntil_ = now + kStepInterval;
        transfer_.keepQuietUntil(quietUntil_);
        return {.kind = ReplyStep::Kind::Grew, .text = std::string(reader_.text())};
    }
    if (finished_) return {};
    return {.kind = ReplyStep::Kind::Waits, .again = nextTime(now)};
}

void ProviderStream::readArrived(SteadyTime now) {
    while (!finished_) {
        const std::optional<std::string> bytes = readMore(now);
        if (bytes && bytes->empty()) return;
        if (bytes) reader_.feed(*bytes);
        if (reader_.hasBegun()) transfer_.noteReplyBegan();
        if (bytes && !reader_.isDone()) continue;
        reader_.finish();
        finished_ = true;
    }
}

/// Nothing at the end of the answer, which is also where nothing more follows a finished reply.
std::optional<std::string> ProviderStream::readMore(SteadyTime now) {
    try {
        std::optional<std::string> bytes = transfer_.read(now);
        if (!bytes || !bytes->empty()) lastBytes_ = now;
        const bool isOver = now >= lastBytes_ + kFinishGrace;
        return reader_.hasFinished() && isOver ? std::nullopt : bytes;
    } catch (const EngineError&) {
        if (!reader_.hasFinished()) throw;
        return std::nullopt;
    }
}

/// A reply becomes shorter where its beginning turns out to have been a thought.
bool ProviderStream::showsSomethingNew() {
    const std::size_t size = reader_.text().size();
    return size != std::exchange(shown_, size) && size != 0;
}

SteadyTime ProviderStream::nextTime(SteadyTime now) const {
    SteadyTime time = transfer_.deadline();
    if (now < quietUntil_) time = std::min(time, quietUntil_);
    if (reader_.hasFinished()) time = std::min(time, lastBytes_ + kFinishGrace);
    return time;
}

FinishedReply ProviderStream::result() {
    FinishedReply reply = parser_(reader_.text(), reader_.isCutShort());
    if (auto* analysis = std::get_if<Analysis>(&reply)) analysis->sources = reader_.sources();
    return reply;
}

} // namespace vorq::gateway
