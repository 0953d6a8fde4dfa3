#include "provider/ModelJson.h"

#include "provider/LenientJson.h"
#include "provider/QuizAnswer.h"
#include "support/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace vorq::gateway {
namespace {

using nlohmann::json;

// JSON that stands far into a reply is a part of it, not its form.
constexpr std::size_t kLongestTalk = 300;
constexpr std::size_t kMostValues = 500;

bool isTexts(const json& value) {
    return value.is_array() && !value.empty() &&
           std::ranges::all_of(value, [](const json& item) { return item.is_string(); });
}

/// Texts below each other; other values that are no text in their JSON form.
std::string textOfValue(const json& value) {
    if (value.is_string()) return value.get<std::string>();
    if (!isTexts(value)) return value.dump(-1, ' ', false, json::error_handler_t::replace);
    std::string text;
    for (const json& item : value)
        text += (text.empty() ? "" : "\n") + item.get<std::string>();
    return text;
}

/// A key under any of its names; empty if missing.
std::string textOf(const json& object, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        const auto entry = object.find(name);
        if (entry == object.end() || entry->is_null()) continue;
        const std::string text = textOfValue(*entry);
        return std::string(trimmed(text));
    }
    return {};
}

std::vector<json> valuesIn(std::string_view reply) {
    std::vector<json> values;
    LenientJson reader(reply);
    while (values.size() < kMostValues) {
        std::optional<json> value = reader.next();
        if (!value) break;
        values.push_back(std::move(*value));
    }
    return values;
}

std::vector<json> objectsIn(const json& list) {
    std::vector<json> objects;
    if (!list.is_array()) return objects;
    std::ranges::copy_if(list, std::back_inserter(objects),
                         [](const json& item) { return item.is_object(); });
    return objects;
}

/// The list under `key`, or whatever list of objects the value is or holds.
std::vector<json> listWithin(const json& value, const char* key) {
    if (!value.is_object()) return objectsIn(value);
    if (const auto entry = value.find(key); entry != value.end()) return objectsIn(*entry);
    for (const json& member : value) {
        if (std::vector<json> objects = objectsIn(member); !objects.empty()) return objects;
        const auto entry = member.is_object() ? member.find(key) : member.end();
        if (entry != member.end()) return objectsIn(*entry);
    }
    return {};
}

/// The objects that a model was to give as a list under `key`.
std::vector<json> listIn(const std::vector<json>& values, const char* key) {
    for (const json& value : values) {
        if (std::vector<json> objects = listWithin(value, key); !objects.empty()) return objects;
    }
    return objectsIn(values);
}

std::optional<QuizQuestion> questionIn(const json& item) {
    const QuizOptions options(item);
    const std::optional<std::size_t> answer = options.answerOf(item);
    QuizQuestion question{.prompt = textOf(item, {"prompt", "question"}),
                          .options = options.texts(),
                          .answerIndex = answer.value_or(0),
                          .explanation = textOf(item, {"explanation", "reason"})};
    const bool isUsable = answer && !question.prompt.empty() && question.options.size() >= 2;
    return isUsable ? std::optional(std::move(question)) : std::nullopt;
}

} // namespace

ParsedReply readWholeReply(std::string_view reply) {
    ParsedReply whole;
    const std::string_view plain = trimmed(reply);
    LenientJson reader(plain);
    while (const std::optional<json> value = reader.next()) {
        if (reader.begin() > kLongestTalk) break;
        if (!value->is_object() || !value->contains("summary")) continue;
        whole.analysis.summary = textOf(*value, {"summary"});
        whole.analysis.feedback = textOf(*value, {"feedback"});
        whole.analysis.corrections = textOf(*value, {"corrections"});
        whole.breaksOff = reader.endedInText();
        return whole;
    }
    whole.analysis.summary = plain;
    return whole;
}

std::vector<Flashcard> readFlashcards(std::string_view reply) {
    std::vector<Flashcard> cards;
    for (const json& item : listIn(valuesIn(reply), "flashcards")) {
        Flashcard card{textOf(item, {"front", "question", "term"}),
                       textOf(item, {"back", "answer", "definition"})};
        if (!card.front.empty() && !card.back.empty()) cards.push_back(std::move(card));
    }
    return cards;
}

Quiz readQuiz(std::string_view reply) {
    Quiz quiz;
    const std::vector<json> values = valuesIn(reply);
    for (const json& value : values) {
        if (value.is_object() && quiz.primer.empty()) {
            quiz.primer = textOf(value, {"primer", "intro"});
        }
    }
    for (const json& item : listIn(values, "questions")) {
        if (std::optional<QuizQuestion> question = questionIn(item)) {
            quiz.questions.push_back(std::move(*question));
        }
    }
    return quiz;
}

} // namespace vorq::gateway
