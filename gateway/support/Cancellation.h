#pragma once

#include <stdexcept>

namespace vorq::gateway {

/// Thrown by work that is no longer wanted: the client left or the server stops. Nobody is left to
/// read a message.
class CancelledError : public std::runtime_error {
  public:
    CancelledError() : std::runtime_error("cancelled") {}
};

} // namespace vorq::gateway
