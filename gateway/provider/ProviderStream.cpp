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
    : m_config(config),
      m_transfer(loop, config, body.dump(-1, ' ', false, json::error_handler_t::replace)),
      m_parser(std::move(parser)) {}

void ProviderStream::setCaller(const std::function<void()>& call) {
    m_transfer.setCaller(call);
}

ReplyStep ProviderStream::step(SteadyTime now) {
    try {
        return next(now);
    } catch (const EngineError& error) {
        throw EngineError(error.status, withoutKey(m_config, error.what()));
    }
}

ReplyStep ProviderStream::next(SteadyTime now) {
    readArrived(now);
    const bool isDue = m_finished || now >= m_quietUntil;
    if (isDue && showsSomethingNew()) {
        m_quietUntil = now + kStepInterval;
        m_transfer.keepQuietUntil(m_quietUntil);
        return {.kind = ReplyStep::Kind::Grew, .text = std::string(m_reader.text())};
    }
    if (m_finished) return {};
    return {.kind = ReplyStep::Kind::Waits, .again = nextTime(now)};
}

void ProviderStream::readArrived(SteadyTime now) {
    while (!m_finished) {
        const std::optional<std::string> bytes = readMore(now);
        if (bytes && bytes->empty()) return;
        if (bytes) m_reader.feed(*bytes);
        if (m_reader.hasBegun()) m_transfer.noteReplyBegan();
        if (bytes && !m_reader.isDone()) continue;
        m_reader.finish();
        m_finished = true;
    }
}

/// Nothing at the end of the answer, which is also where nothing more follows a finished reply.
std::optional<std::string> ProviderStream::readMore(SteadyTime now) {
    try {
        std::optional<std::string> bytes = m_transfer.read(now);
        if (!bytes || !bytes->empty()) m_lastBytes = now;
        const bool isOver = now >= m_lastBytes + kFinishGrace;
        return m_reader.hasFinished() && isOver ? std::nullopt : bytes;
    } catch (const EngineError&) {
        if (!m_reader.hasFinished()) throw;
        return std::nullopt;
    }
}

/// A reply becomes shorter where its beginning turns out to have been a thought.
bool ProviderStream::showsSomethingNew() {
    const std::size_t size = m_reader.text().size();
    return size != std::exchange(m_shown, size) && size != 0;
}

SteadyTime ProviderStream::nextTime(SteadyTime now) const {
    SteadyTime time = m_transfer.deadline();
    if (now < m_quietUntil) time = std::min(time, m_quietUntil);
    if (m_reader.hasFinished()) time = std::min(time, m_lastBytes + kFinishGrace);
    return time;
}

FinishedReply ProviderStream::result() {
    FinishedReply reply = m_parser(m_reader.text(), m_reader.isCutShort());
    if (auto* analysis = std::get_if<Analysis>(&reply)) analysis->sources = m_reader.sources();
    return reply;
}

} // namespace vorq::gateway
