#include "provider/ChatStreamReader.h"

#include "provider/ErrorMessage.h"
#include "provider/ProviderError.h"
#include "support/Utf8.h"

#include <nlohmann/json.hpp>

namespace vorq::gateway {
namespace {

using nlohmann::json;

constexpr std::size_t kLongestPending = std::size_t{4} * 1024 * 1024;
constexpr std::size_t kLongestReply = std::size_t{2} * 1024 * 1024;

const json* member(const json& value, const char* key) {
    if (!value.is_object()) return nullptr;
    const auto entry = value.find(key);
    return entry == value.end() || entry->is_null() ? nullptr : &*entry;
}

/// The text of "content": a string, or a list of parts with a "text" each.
std::string contentText(const json& content) {
    if (content.is_string()) return content.get<std::string>();
    std::string text;
    if (!content.is_array()) return text;
    for (const json& part : content) {
        const json* piece = member(part, "text");
        if (piece != nullptr && piece->is_string()) text += piece->get_ref<const std::string&>();
    }
    return text;
}

/// Thoughts that a provider sends apart from the reply are not shown, but the model is at work.
bool holdsThought(const json& delta) {
    for (const char* key : {"reasoning", "reasoning_content"}) {
        const json* thought = member(delta, key);
        if (thought != nullptr && !thought->empty() && *thought != "") return true;
    }
    return false;
}

std::vector<Source> citedSources(const json& list) {
    std::vector<Source> sources;
    if (!list.is_array()) return sources;
    for (const json& item : list) {
        if (item.is_string()) sources.push_back({.title = {}, .url = item.get<std::string>()});
    }
    return sources;
}

} // namespace

void ChatStreamReader::feed(std::string_view bytes) {
    pending_ += bytes;
    if (pending_.size() > kLongestPending) throw tooLong();
    std::size_t begin = 0;
    for (std::size_t end = pending_.find('\n'); end != std::string::npos && !done_;
         end = pending_.find('\n', begin)) {
        const std::string_view current = std::string_view(pending_).substr(begin, end - begin);
        if (!isEventStream_ && trimmed(current).starts_with('{')) return; // one whole document
        line(current);
        begin = end + 1;
    }
    pending_.erase(0, begin);
}

void ChatStreamReader::line(std::string_view line) {
    line = trimmed(line);
    constexpr std::string_view mark = "data:";
    if (!line.starts_with(mark)) return;
    isEventStream_ = true;
    const std::string_view data = trimmed(line.substr(mark.size()));
    if (data == "[DONE]") {
        done_ = true;
    } else if (!data.empty()) {
        payload(data);
    }
}

void ChatStreamReader::payload(std::string_view text) {
    const json parsed = json::parse(text, nullptr, false);
    if (!parsed.is_object()) throw unreadable();
    if (const json* error = member(parsed, "error")) throw gaveUp(errorMessage(*error));
    if (const json* list = member(parsed, "citations")) sources_ = citedSources(*list);
    const json* choices = member(parsed, "choices");
    if (choices == nullptr || !choices->is_array() || choices->empty()) return;
    const json& choice = choices->front();
    for (const char* key : {"delta", "message"}) {
        const json* holder = member(choice, key);
        const json* content = holder != nullptr ? member(*holder, "content") : nullptr;
        if (content != nullptr) text_ += contentText(*content);
        begun_ = begun_ || !text_.empty() || (holder != nullptr && holdsThought(*holder));
    }
    if (member(choice, "finish_reason") != nullptr) sawFinish_ = true;
    if (text_.size() > kLongestReply) throw tooLong();
}

void ChatStreamReader::finish() {
    const std::string rest = std::exchange(pending_, {});
    if (!done_ && isEventStream_) {
        line(rest);
        if (!done_ && !sawFinish_) throw brokeOff();
    } else if (!done_) {
        if (trimmed(rest).empty()) throw emptyReply();
        if (trimmed(rest).starts_with("data:")) {
            line(rest);
            if (!done_ && !sawFinish_) throw brokeOff();
        } else {
            payload(rest);
        }
    }
    done_ = true;
    if (trimmed(text()).empty()) throw emptyReply();
}

std::string_view ChatStreamReader::text() const {
    constexpr std::string_view open = "<think>";
    constexpr std::string_view close = "</think>";
    const std::string_view all = text_;
    const std::size_t start = all.find_first_not_of(" \t\r\n");
    if (start == std::string_view::npos) return {};
    const std::string_view visible = all.substr(start);
    // A thought that has only begun to be opened is not shown either.
    if (!visible.starts_with(open)) return open.starts_with(visible) && !done_ ? "" : visible;
    const std::size_t end = visible.find(close);
    if (end == std::string_view::npos) return {};
    const std::string_view rest = visible.substr(end + close.size());
    return rest.substr(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
}

} // namespace vorq::gateway
