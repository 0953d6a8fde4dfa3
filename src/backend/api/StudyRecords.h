#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace vorq {

class JsonWriter;

struct FlashcardDTO {
    QString front;
    QString back;

    bool operator==(const FlashcardDTO&) const = default;
};

/// Flashcards that the backend made from a text.
struct FlashcardsResult {
    std::vector<FlashcardDTO> flashcards;

    bool operator==(const FlashcardsResult&) const = default;
};

/// A question as it comes; every key may be missing, and "question" stands in for "prompt".
struct QuizQuestionDTO {
    QString prompt;
    std::vector<QString> options;
    qint64 answerIndex = 0;
    QString explanation;

    bool operator==(const QuizQuestionDTO&) const = default;
};

/// A quiz that the backend made from a text.
struct QuizResult {
    QString primer;
    std::vector<QuizQuestionDTO> questions;

    bool operator==(const QuizResult&) const = default;
};

[[nodiscard]] std::optional<FlashcardsResult> decodeFlashcardsResult(QByteArrayView json);
[[nodiscard]] std::optional<QuizResult> decodeQuizResult(QByteArrayView json);
void encode(const FlashcardsResult& result, JsonWriter& writer);
void encode(const QuizResult& result, JsonWriter& writer);

} // namespace vorq
