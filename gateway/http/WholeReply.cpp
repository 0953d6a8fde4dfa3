#include "http/WholeReply.h"

#include "http/JsonText.h"

#include <algorithm>
#include <exception>
#include <nlohmann/json.hpp>

namespace vorq::gateway {

FeedStep WholeReply::step(SteadyTime now) {
    ReplyStep step = stepReply(now);
    while (step.kind == ReplyStep::Kind::Grew)
        step = stepReply(now);
    if (step.kind == ReplyStep::Kind::Ended) {
        return {.bytes = oneLineJson(encode(result())), .isLast = true};
    }
    if (now < m_lastSent + kHeartbeat)
        return {.again = std::min(step.again, m_lastSent + kHeartbeat)};
    m_lastSent = now;
    m_hasBegun = true;
    return {.bytes = " "};
}

FeedStep WholeReply::next(SteadyTime now) {
    if (m_lastSent == SteadyTime::min()) m_lastSent = now;
    if (!m_hasBegun) return step(now);
    try {
        return step(now);
    } catch (const EngineError& error) {
        return {.bytes = oneLineJson(errorDocument(error.what())), .isLast = true};
    } catch (const std::exception&) {
        return {.bytes =
                    oneLineJson(errorDocument("The Vorq gateway failed while it was answering.")),
                .isLast = true};
    }
}

std::string WholeReply::stopped() const {
    if (!m_hasBegun) return {};
    return oneLineJson(errorDocument("The Vorq gateway was stopped. Try again in a moment."));
}

} // namespace vorq::gateway
