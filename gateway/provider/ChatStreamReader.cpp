#include "provider/ChatStreamReader.h"

#include "provider/ChunkJson.h"
#include "provider/ErrorMessage.h"
#include "provider/ProviderError.h"
#include "provider/Thoughts.h"
#include "support/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace vorq::gateway {
namespace {

using nlohmann::json;

constexpr std::size_t kLongestDocument = std::size_t{4} * 1024 * 1024;
constexpr std::size_t kLongestReply = std::size_t{2} * 1024 * 1024;

bool isKeepAlive(std::string_view data) {
    constexpr std::array words = {"ping", "keepalive", "keep-alive", "heartbeat"};
    return std::ranges::find(words, lowered(data)) != words.end();
}

/// The words of an event named "error".
std::string failureWords(std::string_view data) {
    const json parsed = parseChunk(data);
    if (parsed.is_discarded()) return errorMessage(json(sanitized(data)));
    return parsed.is_string() ? errorMessage(parsed) : errorMessageIn(data);
}

} // namespace

void ChatStreamReader::feed(std::string_view bytes) {
    if (m_done) return;
    if (m_form == Form::Events) {
        handleEvents(m_events.feed(bytes));
        return;
    }
    m_document += bytes;
    if (m_document.size() > kLongestDocument) throw tooLong();
    if (m_form != Form::Unknown) return;
    recognizeForm();
    if (m_form == Form::Events) handleEvents(m_events.feed(std::exchange(m_document, {})));
}

void ChatStreamReader::recognizeForm() {
    if (kByteOrderMark.starts_with(m_document)) return;
    if (m_document.starts_with(kByteOrderMark)) m_document.erase(0, kByteOrderMark.size());
    m_document.erase(0, m_document.find_first_not_of(" \t\r\n"));
    if (m_document.empty()) return;
    const bool isDocument = std::string_view("{[<").contains(m_document.front());
    m_form = isDocument ? Form::Document : Form::Events;
}

void ChatStreamReader::handleEvents(const std::vector<StreamEvent>& events) {
    for (const StreamEvent& event : events) {
        if (m_done) return;
        const std::string_view data = trimmed(event.data);
        if (event.name == "error") throw gaveUp(failureWords(data));
        if (data == "[DONE]") {
            m_done = true;
        } else if (!data.empty() && !isKeepAlive(data)) {
            handlePayload(data);
        }
    }
}

void ChatStreamReader::handlePayload(std::string_view text) {
    const json parsed = parseChunk(text);
    if (parsed.is_object()) {
        handleChunk(readChunk(parsed));
    } else if (parsed.is_array()) {
        for (const json& item : parsed) {
            if (!item.is_object()) throw unreadable();
            handleChunk(readChunk(item));
        }
    } else if (parsed.is_discarded()) {
        throw unreadable();
    }
}

void ChatStreamReader::handleChunk(ChatChunk chunk) {
    m_hasThought = m_hasThought || chunk.hasThought;
    m_refusal += chunk.refusal;
    if (!chunk.sources.empty()) m_sources = std::move(chunk.sources);
    if (chunk.finish != FinishReason::None) m_finish = chunk.finish;
    if (!chunk.delta.empty()) {
        m_hasDelta = true;
        m_text += chunk.delta;
    } else if (!chunk.message.empty() && !m_hasDelta) {
        // Either the whole so far or the next piece of it.
        if (chunk.message.starts_with(m_text)) m_text.clear();
        m_text += chunk.message;
    }
    if (m_text.size() > kLongestReply) throw tooLong();
}

void ChatStreamReader::finish() {
    if (!m_done && m_form == Form::Document) finishDocument();
    if (!m_done && m_form == Form::Events) finishEvents();
    m_done = true;
    requireReply();
}

void ChatStreamReader::finishDocument() {
    if (m_document.starts_with('<')) throw webPage();
    handlePayload(std::exchange(m_document, {}));
}

void ChatStreamReader::finishEvents() {
    handleEvents(m_events.finish());
    if (!m_events.hasSeenField()) throw unreadable();
    if (!m_done && !hasFinished()) throw brokeOff();
}

void ChatStreamReader::requireReply() const {
    if (m_finish == FinishReason::Failed) throw gaveUp({});
    if (!trimmed(m_refusal).empty()) throw declined(std::string(trimmed(m_refusal)));
    if (m_finish == FinishReason::Filtered) throw filtered();
    if (!trimmed(text()).empty()) return;
    if (isCutShort()) throw hasBegun() ? thoughtTooLong() : lengthReached();
    throw emptyReply();
}

std::string_view ChatStreamReader::text() const {
    return withoutThoughts(m_text, m_done);
}

} // namespace vorq::gateway
