#pragma once

#include "backend/http/Errors.h"

#include <QUrl>

#include <expected>
#include <functional>

namespace vorq {

/// Waits on this computer, on a fixed port, for the one request by which a browser comes back. It
/// stops waiting when it is destroyed. Main thread only.
class LoopbackServer {
  public:
    using Result = std::expected<QUrl, SignInError>;

    LoopbackServer() = default;
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;
    virtual ~LoopbackServer() = default;

    /// Starts to wait. onComplete is called once at most, from the event loop, and may destroy the
    /// server; never if the start fails.
    [[nodiscard]] virtual std::expected<void, SignInError>
    start(std::function<void(const Result&)> onComplete) = 0;
};

} // namespace vorq
