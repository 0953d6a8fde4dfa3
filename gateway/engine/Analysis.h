#pragma once

#include <nlohmann/json_fwd.hpp>

#include <optional>
#include <string>
#include <vector>

namespace vorq::gateway {

struct Source {
    std::string title;
    std::string url;

    bool operator==(const Source&) const = default;
};

struct FollowUp {
    std::string question;
    std::vector<std::string> labels;

    bool operator==(const FollowUp&) const = default;
};

/// A whole reply, as the client decodes it.
struct Analysis {
    std::string summary;
    std::string feedback;
    std::string corrections;
    std::vector<Source> sources;
    std::optional<FollowUp> followUp;

    bool operator==(const Analysis&) const = default;
};

struct Flashcard {
    std::string front;
    std::string back;

    bool operator==(const Flashcard&) const = default;
};

struct QuizQuestion {
    std::string prompt;
    std::vector<std::string> options;
    std::size_t answerIndex = 0;
    std::string explanation;

    bool operator==(const QuizQuestion&) const = default;
};

struct Quiz {
    std::string primer;
    std::vector<QuizQuestion> questions;

    bool operator==(const Quiz&) const = default;
};

/// What a request may name as its model, by the names of the provider.
struct ModelList {
    std::vector<std::string> ids;

    bool operator==(const ModelList&) const = default;
};

[[nodiscard]] nlohmann::json encode(const Analysis& analysis);
[[nodiscard]] nlohmann::json encode(const std::vector<Flashcard>& flashcards);
[[nodiscard]] nlohmann::json encode(const Quiz& quiz);
[[nodiscard]] nlohmann::json encode(const ModelList& models);

} // namespace vorq::gateway
