#pragma once

#include "engine/embedded/search/QuestionKind.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vorq::gateway {

/// What a prompt asks for, as far as an engine without a model can serve it.
struct PromptIntent {
    enum class Kind {
        /// "Hello", "thanks".
        SmallTalk,
        Summary,
        KeyTerms,
        /// Writing something new: a rewrite, a translation, a text to order.
        Writing,
        /// Anything else: find what the text says about it.
        Question,
    };
    Kind kind = Kind::Question;
    /// The user's own words; of very many only the beginning and the end.
    std::string request;
    /// The words of the request that say what it is about.
    std::string subject;
    /// The user wants more about an excerpt of an earlier reply.
    bool goesDeeper = false;
    /// "in three sentences", "5 points".
    std::optional<std::size_t> count;
    Expectation expected;
};

/// A prompt without the instructions for a model that the client wraps the user's words in.
[[nodiscard]] std::string_view ownWords(std::string_view prompt);

/// Reads a prompt on a text in `textLanguage`, in which the prompt is most likely put, too.
[[nodiscard]] PromptIntent readPrompt(std::string_view prompt,
                                      Language textLanguage = Language::English);

/// A prompt that brings its own text along, as in "Summarise this: …".
struct PromptWithText {
    std::string prompt;
    std::string text;
};

/// The two apart; no text unless one of some length stands behind a first, or before a last, line.
[[nodiscard]] PromptWithText apart(std::string_view prompt);

} // namespace vorq::gateway
