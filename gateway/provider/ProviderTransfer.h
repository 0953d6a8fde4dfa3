#pragma once

#include "provider/ProviderConfig.h"
#include "support/Cancellation.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace vorq::gateway {

/// One POST to the provider, whose answer is read piece by piece. Used from one thread; destroying
/// it drops the connection. Failures are EngineError.
class ProviderTransfer {
  public:
    /// `config` outlives the transfer.
    ProviderTransfer(const ProviderConfig& config, std::string body);
    ~ProviderTransfer();
    ProviderTransfer(const ProviderTransfer&) = delete;
    ProviderTransfer& operator=(const ProviderTransfer&) = delete;

    /// Waits until the provider has taken the request.
    void awaitAcceptance(const Cancelled& cancelled);
    /// What arrived, after waiting for it at most `longest`: maybe nothing yet, and no value at the
    /// end of the answer.
    [[nodiscard]] std::optional<std::string> read(std::chrono::milliseconds longest,
                                                  const Cancelled& cancelled);
    /// The model has begun to write or to think: from now on the idle time-out holds. Until then a
    /// provider may load its model behind headers and comments that it sent at once.
    void noteReplyBegan();

  private:
    struct State;
    void advance(std::chrono::milliseconds longest, const Cancelled& cancelled);
    [[noreturn]] void failFor(int code) const;

    std::unique_ptr<State> state_;
};

} // namespace vorq::gateway
