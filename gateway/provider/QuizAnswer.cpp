#include "provider/QuizAnswer.h"

#include "support/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace vorq::gateway {
namespace {

using nlohmann::json;

// Behind a letter or number these make it the label of an option.
constexpr std::string_view kLabelEnds = ").:";

std::string optionText(const json& option) {
    if (option.is_string()) return std::string(trimmed(option.get_ref<const std::string&>()));
    if (option.is_number() || option.is_boolean()) return option.dump();
    if (!option.is_object()) return {};
    for (const char* name : {"text", "option", "value", "answer", "content", "label"}) {
        const auto entry = option.find(name);
        if (entry == option.end() || entry->is_structured()) continue;
        if (std::string text = optionText(*entry); !text.empty()) return text;
    }
    return {};
}

std::vector<std::string> optionsIn(const json& question) {
    std::vector<std::string> options;
    for (const char* name : {"options", "choices", "answers"}) {
        const auto list = question.find(name);
        if (list == question.end() || !list->is_structured()) continue;
        for (const json& option : *list)
            options.push_back(optionText(option));
        break;
    }
    return options;
}

struct Label {
    std::size_t index = 0;
    /// What stands behind the label, trimmed.
    std::string_view rest;
};

/// The label at the start of "b", "B) text", "(b) text" or, with numbers from 1, "2. text".
std::optional<Label> labelIn(std::string_view text) {
    const bool isBracketed = text.starts_with('(');
    if (isBracketed) text.remove_prefix(1);
    if (text.empty()) return std::nullopt;
    Label label;
    const char letter = static_cast<char>(text.front() | 0x20);
    std::size_t length = 1;
    if (letter >= 'a' && letter <= 'z') {
        label.index = static_cast<std::size_t>(letter - 'a');
    } else if (text.front() >= '1' && text.front() <= '9') {
        label.index = static_cast<std::size_t>(text.front() - '1');
    } else {
        return std::nullopt;
    }
    if (text.size() > 1 && !kLabelEnds.contains(text[1])) return std::nullopt;
    if (isBracketed && !text.substr(1).starts_with(')')) return std::nullopt;
    length = std::min<std::size_t>(2, text.size());
    label.rest = trimmed(text.substr(length));
    const bool isApart = text.size() <= length || text[length] == ' ';
    return isApart ? std::optional(label) : std::nullopt;
}

/// Takes labels away if each option has the one of its place.
void dropLabels(std::vector<std::string>& options) {
    std::vector<std::string> bare;
    for (const std::string& option : options) {
        const std::optional<Label> label = labelIn(option);
        const bool isLabelled = label && label->index == bare.size() && !label->rest.empty();
        if (!option.empty() && !isLabelled) return;
        bare.emplace_back(isLabelled ? label->rest : std::string_view());
    }
    options = std::move(bare);
}

std::optional<std::size_t> writtenIndex(std::string_view text) {
    std::size_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = result.ec == std::errc() && result.ptr == text.data() + text.size();
    return isWhole ? std::optional(value) : std::nullopt;
}

std::optional<std::size_t> indexIn(const json& value) {
    if (value.is_number_integer()) {
        const bool isNegative = !value.is_number_unsigned() && value.get<std::int64_t>() < 0;
        return isNegative ? std::nullopt : std::optional(value.get<std::size_t>());
    }
    if (!value.is_number_float()) return std::nullopt;
    const auto number = value.get<double>();
    const bool isIndex = number >= 0 && number < 1000 && std::floor(number) == number;
    return isIndex ? std::optional(static_cast<std::size_t>(number)) : std::nullopt;
}

std::string_view withoutIntroduction(std::string_view answer) {
    const std::string lower = lowered(answer);
    for (const std::string_view start : {"answer:", "option ", "answer "}) {
        if (lower.starts_with(start)) return trimmed(answer.substr(start.size()));
    }
    return answer;
}

} // namespace

QuizOptions::QuizOptions(const json& question) {
    std::vector<std::string> options = optionsIn(question);
    dropLabels(options);
    for (std::string& option : options) {
        m_places.push_back(option.empty() ? std::nullopt : std::optional(m_texts.size()));
        if (!option.empty()) m_texts.push_back(std::move(option));
    }
}

std::optional<std::size_t> QuizOptions::placeOf(std::optional<std::size_t> index) const {
    return index && *index < m_places.size() ? m_places[*index] : std::nullopt;
}

std::optional<std::size_t> QuizOptions::placeOfText(const std::string& text) const {
    auto same = std::ranges::find(m_texts, text);
    if (same == m_texts.end()) {
        same = std::ranges::find(m_texts, lowered(text),
                                 [](const std::string& option) { return lowered(option); });
    }
    return same == m_texts.end() ? std::nullopt
                                 : std::optional(static_cast<std::size_t>(same - m_texts.begin()));
}

std::optional<std::size_t> QuizOptions::placeNamedBy(const json& value, bool isIndex) const {
    const std::string text = optionText(value);
    if (text.empty()) return std::nullopt;
    if (!isIndex) {
        if (const auto place = placeOfText(text)) return place;
    }
    if (!value.is_string()) return placeOf(indexIn(value));
    if (const auto number = writtenIndex(text)) return placeOf(number);
    const std::string_view plain = withoutIntroduction(text);
    const std::optional<Label> label = labelIn(plain);
    if (!label) return placeOfText(std::string(plain));
    return label->rest.empty() ? placeOf(label->index) : placeOfText(std::string(label->rest));
}

std::optional<std::size_t> QuizOptions::answerOf(const json& question) const {
    struct Name {
        const char* name;
        bool isIndex;
    };
    constexpr std::array names = {
        Name{"answerIndex", true},     Name{"answer_index", true},       Name{"correctIndex", true},
        Name{"correct_index", true},   Name{"correctAnswerIndex", true}, Name{"answer", false},
        Name{"correct_answer", false}, Name{"correctAnswer", false},     Name{"correct", false}};
    for (const Name& entry : names) {
        const auto value = question.find(entry.name);
        if (value == question.end()) continue;
        if (const auto place = placeNamedBy(*value, entry.isIndex)) return place;
    }
    return std::nullopt;
}

} // namespace vorq::gateway
