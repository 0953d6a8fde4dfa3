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
    if (done_) return;
    if (form_ == Form::Events) {
        handleEvents(events_.feed(bytes));
        return;
    }
    document_ += bytes;
    if (document_.size() > kLongestDocument) throw tooLong();
    if (form_ != Form::Unknown) return;
    recognizeForm();
    if (form_ == Form::Events) handleEvents(events_.feed(std::exchange(document_, {})));
}

void ChatStreamReader::recognizeForm() {
    if (kByteOrderMark.starts_with(document_)) return;
    if (document_.starts_with(kByteOrderMark)) document_.erase(0, kByteOrderMark.size());
    document_.erase(0, document_.find_first_not_of(" \t\r\n"));
    if (document_.empty()) return;
    const bool isDocument = std::string_view("{[<").contains(document_.front());
    form_ = isDocument ? Form::Document : Form::Events;
}

void ChatStreamReader::handleEvents(const std::vector<StreamEvent>& events) {
    for (const StreamEvent& event : events) {
        if (done_) return;
        const std::string_view data = trimmed(event.data);
        if (event.name == "error") throw gaveUp(failureWords(data));
        if (data == "[DONE]") {
            done_ = true;
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
    hasThought_ = hasThought_ || chunk.hasThought;
    refusal_ += chunk.refusal;
    if (!chunk.sources.empty()) sources_ = std::move(chunk.sources);
    if (chunk.finish != FinishReason::None) finish_ = chunk.finish;
    if (!chunk.delta.empty()) {
        hasDelta_ = true;
        text_ += chunk.delta;
    } else if (!chunk.message.empty() && !hasDelta_) {
        // Either the whole so far or the next piece of it.
        if (chunk.message.starts_with(text_)) text_.clear();
        text_ += chunk.message;
    }
    if (text_.size() > kLongestReply) throw tooLong();
}

void ChatStreamReader::finish() {
    if (!done_ && form_ == Form::Document) finishDocument();
    if (!done_ && form_ == Form::Events) finishEvents();
    done_ = true;
    requireReply();
}

void ChatStreamReader::finishDocument() {
    if (document_.starts_with('<')) throw webPage();
    handlePayload(std::exchange(document_, {}));
}

void ChatStreamReader::finishEvents() {
    handleEvents(events_.finish());
    if (!events_.hasSeenField()) throw unreadable();
    if (!done_ && !hasFinished()) throw brokeOff();
}

void ChatStreamReader::requireReply() const {
    if (finish_ == FinishReason::Failed) throw gaveUp({});
    if (!trimmed(refusal_).empty()) throw declined(std::string(trimmed(refusal_)));
    if (finish_ == FinishReason::Filtered) throw filtered();
    if (!trimmed(text()).empty()) return;
    if (isCutShort()) throw hasBegun() ? thoughtTooLong() : lengthReached();
    throw emptyReply();
}

std::string_view ChatStreamReader::text() const {
    return withoutThoughts(text_, done_);
}

} // namespace vorq::gateway
