#pragma once

#include "engine/EngineSwitch.h"
#include "http/ReplyFeed.h"
#include "provider/ProviderConfig.h"

#include <functional>
#include <memory>
#include <string>

namespace vorq::gateway {

/// Asks a provider for a word, and answers with the page that `show` makes of the outcome. Nobody
/// waits for it but the browser.
class ConnectionTest final : public ReplyFeed {
  public:
    /// Of a sentence on what went wrong, empty if nothing did.
    using Show = std::function<std::string(const std::string& problem)>;

    ConnectionTest(const ProviderConfig& config, Show show);

    [[nodiscard]] const char* contentType() const override;
    [[nodiscard]] bool beginsAtOnce() const override { return false; }
    [[nodiscard]] FeedStep next(SteadyTime now) override;
    [[nodiscard]] std::string stopped() const override { return {}; }

  private:
    Show m_show;
};

} // namespace vorq::gateway
