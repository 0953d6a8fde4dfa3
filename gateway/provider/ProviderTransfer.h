#pragma once

#include "provider/ProviderConfig.h"
#include "provider/TransferLoop.h"
#include "support/SteadyTime.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vorq::gateway {

/// One request to the provider, whose answer is read piece by piece as it comes. Used by one thread
/// at a time and never waits; destroying it drops the connection. Failures are EngineError.
class ProviderTransfer {
  public:
    /// `config` and `loop` outlive the transfer. A POST, but a GET without a body.
    ProviderTransfer(TransferLoop& loop, const ProviderConfig& config,
                     std::optional<std::string> body);
    ~ProviderTransfer();
    ProviderTransfer(const ProviderTransfer&) = delete;
    ProviderTransfer& operator=(const ProviderTransfer&) = delete;

    /// `call` runs, on another thread, when something arrived or the transfer ended.
    void setCaller(std::function<void()> call);
    /// What arrived since the last call: maybe nothing yet, and no value at the end of the answer.
    /// Throws for an answer that was refused, broke off or takes too long.
    [[nodiscard]] std::optional<std::string> read(SteadyTime now);
    /// When the provider's time is up unless something arrives. It runs while nothing of the
    /// request goes out and nothing of the answer comes in.
    [[nodiscard]] SteadyTime deadline() const;
    /// The model has begun to write or to think: from now on the idle time-out holds. Until then a
    /// provider may load its model behind headers and comments that it sent at once.
    void noteReplyBegan();
    /// Until then nobody is called for what arrives, but for the end.
    void keepQuietUntil(SteadyTime time);

  private:
    class State;

    TransferLoop& m_loop;
    std::shared_ptr<State> m_state;
};

} // namespace vorq::gateway
