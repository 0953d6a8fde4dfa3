#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vorq::gateway {

/// What a prompt asks for, as far as an engine without a model can serve it.
struct PromptIntent {
    enum class Kind {
        Summary,
        KeyTerms,
        /// Writing something new: a rewrite, a translation, a text to order.
        Writing,
        /// Anything else: find what the text says about it.
        Question,
    };
    Kind kind = Kind::Question;
    /// The user's own words, without the client's instructions around them.
    std::string request;
    /// The user wants more about an excerpt of an earlier reply.
    bool goesDeeper = false;
    /// "in three sentences", "5 points".
    std::optional<std::size_t> count;
};

[[nodiscard]] PromptIntent readPrompt(std::string_view prompt);

} // namespace vorq::gateway
