#include "backend/api/StudyRecords.h"

#include "support/json/JsonWriter.h"
#include "support/json/StrictJson.h"

namespace vorq {

using strict_json::Element;
using strict_json::Object;
using strict_json::readIfPresent;
using strict_json::readRequired;

static bool read(Element element, FlashcardDTO& card) {
    Object object;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "front", card.front) &&
           readRequired(object, "back", card.back);
}

static bool read(Element element, FlashcardsResult& result) {
    Object object;
    return element.get(object) == simdjson::SUCCESS &&
           readRequired(object, "flashcards", result.flashcards);
}

// A key of another type still fails: an answer index by default would mark a wrong option.
static bool read(Element element, QuizQuestionDTO& question) {
    Object object;
    return element.get(object) == simdjson::SUCCESS &&
           readIfPresent(object, "question", question.prompt) &&
           readIfPresent(object, "prompt", question.prompt) &&
           readIfPresent(object, "options", question.options) &&
           readIfPresent(object, "answerIndex", question.answerIndex) &&
           readIfPresent(object, "explanation", question.explanation);
}

static bool read(Element element, QuizResult& result) {
    Object object;
    return element.get(object) == simdjson::SUCCESS &&
           readRequired(object, "primer", result.primer) &&
           readRequired(object, "questions", result.questions);
}

std::optional<FlashcardsResult> decodeFlashcardsResult(QByteArrayView json) {
    return strict_json::decodeDocument<FlashcardsResult>(json);
}

std::optional<QuizResult> decodeQuizResult(QByteArrayView json) {
    return strict_json::decodeDocument<QuizResult>(json);
}

void encode(const FlashcardsResult& result, JsonWriter& writer) {
    writer.beginObject();
    writer.key(u"flashcards");
    writer.beginArray();
    for (const FlashcardDTO& card : result.flashcards) {
        writer.beginObject();
        writer.member(u"front", card.front);
        writer.member(u"back", card.back);
        writer.endObject();
    }
    writer.endArray();
    writer.endObject();
}

static void encode(const QuizQuestionDTO& question, JsonWriter& writer) {
    writer.beginObject();
    writer.member(u"prompt", question.prompt);
    writer.key(u"options");
    writer.beginArray();
    for (const QString& option : question.options)
        writer.value(option);
    writer.endArray();
    writer.member(u"answerIndex", question.answerIndex);
    writer.member(u"explanation", question.explanation);
    writer.endObject();
}

void encode(const QuizResult& result, JsonWriter& writer) {
    writer.beginObject();
    writer.member(u"primer", result.primer);
    writer.key(u"questions");
    writer.beginArray();
    for (const QuizQuestionDTO& question : result.questions)
        encode(question, writer);
    writer.endArray();
    writer.endObject();
}

} // namespace vorq
