#include "EvalText.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace vorq::evaluation {
namespace {

constexpr std::string_view kOpen = "⟦";
constexpr std::string_view kClose = "⟧";
constexpr std::string_view kQuestions = "=====\n";

using Marked = std::map<int, std::string>;

int numberAt(std::string_view text) {
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// The text without its marks; what they enclose goes to `marked`.
std::string withoutMarks(std::string_view text, Marked& marked) {
    std::string plain;
    while (true) {
        const std::size_t open = text.find(kOpen);
        plain += text.substr(0, open);
        if (open == std::string_view::npos) return plain;
        text.remove_prefix(open + kOpen.size());
        const std::size_t bar = text.find('|');
        const std::size_t close = text.find(kClose);
        if (close == std::string_view::npos || bar > close) {
            throw std::runtime_error("A mark is not closed.");
        }
        const std::string_view sentence = text.substr(bar + 1, close - bar - 1);
        marked[numberAt(text)] = sentence;
        plain += sentence;
        text.remove_prefix(close + kClose.size());
    }
}

EvalQuestion questionIn(const std::string& line, const Marked& marked) {
    std::istringstream words(line);
    std::string numbers;
    EvalQuestion question;
    words >> numbers >> question.kind >> std::ws;
    std::getline(words, question.question);
    std::istringstream list(numbers);
    for (std::string number; std::getline(list, number, ',');) {
        const auto answer = marked.find(numberAt(number));
        if (answer == marked.end()) throw std::runtime_error("No sentence is marked: " + line);
        question.answers.push_back(answer->second);
    }
    return question;
}

/// Without white space and Markdown's emphasis, in which a quote and its source may differ.
std::string bare(std::string_view text) {
    std::string out;
    std::ranges::copy_if(text, std::back_inserter(out),
                         [](char c) { return !std::string_view(" \n\t*_`").contains(c); });
    return out;
}

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::ostringstream content;
    content << file.rdbuf();
    if (!file) throw std::runtime_error("Cannot read " + path.string());
    return content.str();
}

} // namespace

EvalText readEvalText(std::string_view content) {
    const std::size_t split = content.find(kQuestions);
    if (split == std::string_view::npos) throw std::runtime_error("There are no questions.");
    Marked marked;
    EvalText text;
    text.text = withoutMarks(content.substr(0, split), marked);
    std::istringstream lines(std::string(content.substr(split + kQuestions.size())));
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty()) text.questions.push_back(questionIn(line, marked));
    }
    return text;
}

std::vector<EvalText> readEvalTexts(const std::filesystem::path& folder) {
    std::vector<EvalText> texts;
    for (const std::string_view part : kParts) {
        for (const auto& entry : std::filesystem::directory_iterator(folder / part)) {
            EvalText text = readEvalText(contentOf(entry.path()));
            text.name = entry.path().stem().string();
            text.language = text.name.substr(0, 2);
            text.part = part;
            texts.push_back(std::move(text));
        }
    }
    std::ranges::sort(texts, {}, &EvalText::name);
    return texts;
}

bool isRight(const EvalQuestion& question, std::string_view quote) {
    const std::string given = bare(quote);
    return std::ranges::any_of(question.answers, [&](const std::string& answer) {
        constexpr std::size_t label = 24; // bytes: the time and the name in front of a remark
        const std::string right = bare(answer);
        if (given.contains(right)) return given.size() <= right.size() * 3 / 2 + label;
        return right.contains(given) && given.size() * 2 >= right.size();
    });
}

} // namespace vorq::evaluation
