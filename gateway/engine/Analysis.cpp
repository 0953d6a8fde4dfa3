#include "engine/Analysis.h"

#include <nlohmann/json.hpp>

namespace vorq::gateway {

using nlohmann::json;

json encode(const Analysis& analysis) {
    json sources = json::array();
    for (const Source& source : analysis.sources) {
        json item = json::object();
        if (!source.title.empty()) item["title"] = source.title;
        if (!source.url.empty()) item["url"] = source.url;
        sources.push_back(std::move(item));
    }
    json result = {{"summary", analysis.summary},
                   {"feedback", analysis.feedback},
                   {"corrections", analysis.corrections},
                   {"sources", std::move(sources)}};
    if (analysis.followUp) {
        result["followUp"] = {{"question", analysis.followUp->question},
                              {"labels", analysis.followUp->labels}};
    }
    return result;
}

json encode(const std::vector<Flashcard>& flashcards) {
    json cards = json::array();
    for (const Flashcard& card : flashcards) {
        cards.push_back({{"front", card.front}, {"back", card.back}});
    }
    return {{"flashcards", std::move(cards)}};
}

json encode(const Quiz& quiz) {
    json questions = json::array();
    for (const QuizQuestion& question : quiz.questions) {
        questions.push_back({{"prompt", question.prompt},
                             {"options", question.options},
                             {"answerIndex", question.answerIndex},
                             {"explanation", question.explanation}});
    }
    return {{"primer", quiz.primer}, {"questions", std::move(questions)}};
}

json encode(const ModelList& models) {
    json list = json::array();
    for (const std::string& id : models.ids)
        list.push_back({{"id", id}});
    return {{"models", std::move(list)}};
}

} // namespace vorq::gateway
