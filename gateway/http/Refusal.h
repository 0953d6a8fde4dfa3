#pragma once

#include "http/Api.h"

#include <exception>
#include <optional>
#include <string>

namespace vorq::gateway {

/// The answer to a request that failed.
struct Refusal {
    int status = 500;
    /// What the user reads.
    std::string sentence;
    std::optional<int> retryAfterSeconds;
    /// See HttpAnswer.
    std::string allowedMethods = {};
    /// See ApiError.
    std::string field = {};
};

/// What to answer to a request that ended in `failure`, whatever that is. Failures of the gateway
/// itself are written to standard error, without anything that the client sent.
[[nodiscard]] Refusal refusalFor(const std::exception_ptr& failure);

/// The answer itself, as JSON or as a page.
[[nodiscard]] HttpAnswer answerFor(const Refusal& refusal, bool asPage);

} // namespace vorq::gateway
