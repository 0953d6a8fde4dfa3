#pragma once

#include <optional>
#include <stdexcept>
#include <string>

namespace vorq::gateway {

/// A refusal with its HTTP status and the sentence the user reads.
class ApiError : public std::runtime_error {
  public:
    ApiError(int httpStatus, const std::string& sentence)
        : std::runtime_error(sentence), status(httpStatus) {}

    int status;
    /// Set on status 429.
    std::optional<int> retryAfterSeconds;
};

} // namespace vorq::gateway
