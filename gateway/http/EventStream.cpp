#include "http/EventStream.h"

#include "http/JsonText.h"

#include <algorithm>
#include <exception>
#include <nlohmann/json.hpp>

namespace vorq::gateway {
namespace {

using nlohmann::json;

constexpr auto kComment = ": waiting for the model\n\n";

std::string event(const json& payload) {
    return "data: " + oneLineJson(payload) + "\n\n";
}

std::string closingEvent(const FinishedReply& reply) {
    json payload = encode(reply);
    if (payload.contains("summary")) payload["text"] = payload["summary"];
    payload["done"] = true;
    return event(payload);
}

FeedStep failure(const std::string& sentence) {
    return {.bytes = event(errorDocument(sentence)), .isLast = true};
}

} // namespace

FeedStep EventStream::step(SteadyTime now) {
    ReplyStep step = stepReply(now);
    switch (step.kind) {
    case ReplyStep::Kind::Grew:
        m_lastSent = now;
        return {.bytes = event({{"text", std::move(step.text)}})};
    case ReplyStep::Kind::Ended:
        return {.bytes = closingEvent(result()), .isLast = true};
    case ReplyStep::Kind::Waits:
        break;
    }
    if (now < m_lastSent + kHeartbeat)
        return {.again = std::min(step.again, m_lastSent + kHeartbeat)};
    m_lastSent = now;
    return {.bytes = kComment};
}

FeedStep EventStream::next(SteadyTime now) {
    // The head went out just now.
    if (m_lastSent == SteadyTime::min()) m_lastSent = now;
    try {
        return step(now);
    } catch (const EngineError& error) {
        return failure(error.what());
    } catch (const std::exception&) {
        return failure("The Vorq gateway failed while it was answering.");
    }
}

std::string EventStream::stopped() const {
    return event(errorDocument("The Vorq gateway was stopped. Try again in a moment."));
}

} // namespace vorq::gateway
