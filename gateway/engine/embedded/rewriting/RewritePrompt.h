#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorq::gateway {

/// What a prompt of the client's writing tools says, of what it wraps the writer's words in.
struct RewritePrompt {
    /// The writer rejected what was shown.
    bool isAnotherTake = false;
    /// Other words for single ones of the text are asked for, and no rewrite.
    bool asksForWords = false;
    /// The writer's own words; "" where there are none.
    std::string_view ask;
    /// The version that the ask is on, "" if it is on the selection.
    std::string_view current;
};

/// Nothing for any other prompt. The views are parts of the prompt.
[[nodiscard]] std::optional<RewritePrompt> readRewritePrompt(std::string_view prompt);

/// What can be done to a text by rule.
enum class RewriteRule {
    Shorten,
    Repair,
    ToBullets,
    ToSentences,
    UpperCase,
    LowerCase,
    TitleCase,
    SentenceCase,
};

/// The rule that does all of what the ask says; nothing if none does, or only in part.
[[nodiscard]] std::optional<RewriteRule> ruleOf(std::string_view ask);

} // namespace vorq::gateway
