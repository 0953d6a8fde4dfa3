#include "provider/ChatChunk.h"

#include "provider/ErrorMessage.h"
#include "provider/ProviderError.h"
#include "support/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <string_view>

namespace vorq::gateway {
namespace {

using nlohmann::json;

/// Nothing for null and for what is missing.
const json* member(const json& value, const char* key) {
    if (!value.is_object()) return nullptr;
    const auto entry = value.find(key);
    return entry == value.end() || entry->is_null() ? nullptr : &*entry;
}

std::string textMember(const json& value, const char* key) {
    const json* text = member(value, key);
    return text != nullptr && text->is_string() ? text->get<std::string>() : std::string();
}

/// Some providers send an empty member of every kind with each chunk.
bool isVacant(const json& value) {
    if (value.is_string()) return value.get_ref<const std::string&>().empty();
    return value.is_boolean() ? !value.get<bool>() : value.empty();
}

/// A string, or a list of parts with a "text" each.
std::string contentText(const json& content) {
    if (content.is_string()) return content.get<std::string>();
    std::string text;
    if (!content.is_array()) return text;
    for (const json& part : content)
        text += textMember(part, "text");
    return text;
}

bool holdsThought(const json& delta) {
    return std::ranges::any_of(
        std::array{"reasoning", "reasoning_content", "reasoning_details", "tool_calls"},
        [&delta](const char* key) {
            const json* thought = member(delta, key);
            return thought != nullptr && !isVacant(*thought);
        });
}

FinishReason finishReason(const json& choice) {
    const std::string reason = lowered(textMember(choice, "finish_reason"));
    const auto isOneOf = [&reason](std::initializer_list<std::string_view> names) {
        return std::ranges::find(names, reason) != names.end();
    };
    if (isOneOf({"", "null"})) return FinishReason::None;
    if (isOneOf({"length", "max_tokens", "model_length"})) return FinishReason::Length;
    if (isOneOf({"content_filter", "safety", "sensitive", "moderation"})) {
        return FinishReason::Filtered;
    }
    if (isOneOf({"error", "abort", "aborted", "insufficient_system_resource"})) {
        return FinishReason::Failed;
    }
    return FinishReason::Complete;
}

void failForError(const json& object) {
    const json* error = member(object, "error");
    if (error != nullptr && !isVacant(*error)) throw gaveUp(errorMessage(*error));
}

/// A failure that is not under "error": the whole object tells of it.
bool isFailure(const json& object) {
    if (textMember(object, "object") == "error" || textMember(object, "type") == "error") {
        return true;
    }
    return member(object, "choices") == nullptr &&
           (!textMember(object, "message").empty() || member(object, "detail") != nullptr);
}

std::vector<Source> sourcesIn(const json& object) {
    std::vector<Source> sources;
    const auto add = [&sources](const std::string& title, const std::string& url) {
        const bool isKnown = std::ranges::find(sources, url, &Source::url) != sources.end();
        if (!url.empty() && !isKnown) sources.push_back({.title = title, .url = url});
    };
    for (const char* key : {"search_results", "citations"}) {
        const json* list = member(object, key);
        if (list == nullptr || !list->is_array()) continue;
        for (const json& item : *list) {
            add(textMember(item, "title"),
                item.is_string() ? item.get<std::string>() : textMember(item, "url"));
        }
    }
    return sources;
}

} // namespace

ChatChunk readChunk(const json& object) {
    failForError(object);
    if (isFailure(object)) throw gaveUp(errorMessage(object));
    ChatChunk chunk;
    chunk.sources = sourcesIn(object);
    const json* choices = member(object, "choices");
    if (choices == nullptr || !choices->is_array() || choices->empty()) return chunk;
    const json& choice = choices->front();
    failForError(choice);
    chunk.finish = finishReason(choice);
    for (const char* key : {"delta", "message"}) {
        const json* holder = member(choice, key);
        if (holder == nullptr) continue;
        if (const json* content = member(*holder, "content")) {
            (std::string_view(key) == "delta" ? chunk.delta : chunk.message) =
                contentText(*content);
            chunk.hasThought = chunk.hasThought || content->is_array();
        }
        if (chunk.refusal.empty()) chunk.refusal = textMember(*holder, "refusal");
        chunk.hasThought = chunk.hasThought || holdsThought(*holder);
    }
    return chunk;
}

} // namespace vorq::gateway
