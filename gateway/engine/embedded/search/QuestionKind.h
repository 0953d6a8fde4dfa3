#pragma once

#include "engine/embedded/words/Language.h"

#include <string_view>

namespace vorq::gateway {

enum class QuestionKind { Other, Time, Place, Quantity, Reason, Person, Definition, Permission };

/// What would answer a question.
struct Expectation {
    QuestionKind kind = QuestionKind::Other;
    /// It asks for what is not, or must not be.
    bool isNegative = false;
    /// Of an amount, what sort is asked for.
    bool isMoney = false;
    bool isDuration = false;
    bool isLength = false;
    bool isFrequency = false;
};

/// Reads a question that is put in `language`.
[[nodiscard]] Expectation expectationOf(std::string_view question, Language language);

} // namespace vorq::gateway
