#pragma once

#include <functional>
#include <stdexcept>

namespace vorq::gateway {

/// Answers whether the work in hand is still wanted; true once the client left or the server stops.
using Cancelled = std::function<bool()>;

/// Thrown by work that found its `Cancelled` true. Nobody is left to read a message.
class CancelledError : public std::runtime_error {
  public:
    CancelledError() : std::runtime_error("cancelled") {}
};

} // namespace vorq::gateway
