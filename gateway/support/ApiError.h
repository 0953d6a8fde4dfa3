#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace vorq::gateway {

/// A refusal with its HTTP status and the sentence the user reads.
class ApiError : public std::runtime_error {
  public:
    ApiError(int httpStatus, const std::string& sentence)
        : std::runtime_error(sentence), status(httpStatus) {}
    ApiError(int httpStatus, const std::string& sentence, std::string about)
        : std::runtime_error(sentence), status(httpStatus), field(std::move(about)) {}

    int status;
    /// Set on status 429.
    std::optional<int> retryAfterSeconds;
    /// The field of a form that it is about; empty for none in particular.
    std::string field;
};

} // namespace vorq::gateway
