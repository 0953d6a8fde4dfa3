#include "provider/ModelJson.h"

#include "support/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>

namespace vorq::gateway {
namespace {

using nlohmann::json;

/// The JSON value between the first `open` and the last `close`; discarded if there is none.
json spanBetween(std::string_view text, char open, char close) {
    const std::size_t begin = text.find(open);
    const std::size_t end = text.rfind(close);
    if (begin == std::string_view::npos || end == std::string_view::npos || end < begin) {
        return json(json::value_t::discarded);
    }
    return json::parse(text.substr(begin, end - begin + 1), nullptr, false);
}

/// A string key under any of its names; other values in their JSON form; empty if missing.
std::string textOf(const json& object, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        const auto entry = object.find(name);
        if (entry == object.end() || entry->is_null()) continue;
        const std::string text = entry->is_string()
                                     ? entry->get<std::string>()
                                     : entry->dump(-1, ' ', false, json::error_handler_t::replace);
        return std::string(trimmed(text));
    }
    return {};
}

/// The list of objects in the reply: under `key`, or standing alone.
std::vector<json> listIn(std::string_view reply, const char* key) {
    json object = spanBetween(reply, '{', '}');
    json list =
        object.is_object() && object.contains(key) ? object[key] : spanBetween(reply, '[', ']');
    std::vector<json> items;
    if (!list.is_array()) return items;
    for (json& item : list) {
        if (item.is_object()) items.push_back(std::move(item));
    }
    return items;
}

/// The index of the right option: a number, a letter, or the option's own text.
std::optional<std::size_t> answerOf(const json& question, const std::vector<std::string>& options) {
    for (const char* name : {"answerIndex", "answer_index", "correctIndex", "answer"}) {
        const auto entry = question.find(name);
        if (entry == question.end()) continue;
        if (entry->is_number_unsigned()) {
            const auto index = entry->get<std::size_t>();
            return index < options.size() ? std::optional(index) : std::nullopt;
        }
        if (!entry->is_string()) continue;
        const std::string answer(trimmed(entry->get<std::string>()));
        const auto same = std::ranges::find(options, answer);
        if (same != options.end()) return static_cast<std::size_t>(same - options.begin());
        if (answer.size() == 1 && answer[0] >= 'A' &&
            static_cast<std::size_t>(answer[0] - 'A') < options.size()) {
            return static_cast<std::size_t>(answer[0] - 'A');
        }
    }
    return std::nullopt;
}

std::optional<QuizQuestion> questionIn(const json& item) {
    QuizQuestion question;
    question.prompt = textOf(item, {"prompt", "question"});
    question.explanation = textOf(item, {"explanation", "reason"});
    if (const auto options = item.find("options"); options != item.end() && options->is_array()) {
        for (const json& option : *options) {
            if (!option.is_string()) continue;
            const std::string text(trimmed(option.get_ref<const std::string&>()));
            if (!text.empty()) question.options.push_back(text);
        }
    }
    const std::optional<std::size_t> answer = answerOf(item, question.options);
    if (question.prompt.empty() || question.options.size() < 2 || !answer) return std::nullopt;
    question.answerIndex = *answer;
    return question;
}

} // namespace

Analysis readWholeReply(std::string_view reply) {
    const std::string_view plain = trimmed(reply);
    const bool looksLikeJson = plain.starts_with('{') || plain.starts_with("```");
    const json object = looksLikeJson ? spanBetween(plain, '{', '}') : json();
    if (!object.is_object() || !object.contains("summary")) {
        return {.summary = std::string(plain),
                .feedback = {},
                .corrections = {},
                .sources = {},
                .followUp = std::nullopt};
    }
    return {.summary = textOf(object, {"summary"}),
            .feedback = textOf(object, {"feedback"}),
            .corrections = textOf(object, {"corrections"}),
            .sources = {},
            .followUp = std::nullopt};
}

std::vector<Flashcard> readFlashcards(std::string_view reply) {
    std::vector<Flashcard> cards;
    for (const json& item : listIn(reply, "flashcards")) {
        Flashcard card{textOf(item, {"front", "question", "term"}),
                       textOf(item, {"back", "answer", "definition"})};
        if (!card.front.empty() && !card.back.empty()) cards.push_back(std::move(card));
    }
    return cards;
}

Quiz readQuiz(std::string_view reply) {
    Quiz quiz;
    const json object = spanBetween(reply, '{', '}');
    if (object.is_object()) quiz.primer = textOf(object, {"primer", "intro"});
    for (const json& item : listIn(reply, "questions")) {
        if (std::optional<QuizQuestion> question = questionIn(item)) {
            quiz.questions.push_back(std::move(*question));
        }
    }
    return quiz;
}

} // namespace vorq::gateway
