#pragma once

#include "engine/Engine.h"
#include "provider/ChatStreamReader.h"
#include "provider/ProviderConfig.h"
#include "provider/ProviderTransfer.h"

#include <cstddef>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace vorq::gateway {

/// Makes the finished reply of a provider's whole text, which may end where the model's length
/// limit was. Throws EngineError for what is none.
using ReplyParser = std::function<FinishedReply(std::string_view text, bool isCutShort)>;

/// A provider's reply on its way: asks as it is made.
class ProviderStream final : public ReplyStream {
  public:
    /// `loop` and `config` outlive the reply.
    ProviderStream(TransferLoop& loop, const ProviderConfig& config, const nlohmann::json& body,
                   ReplyParser parser);

    void setCaller(const std::function<void()>& call) override;
    [[nodiscard]] ReplyStep step(SteadyTime now) override;
    [[nodiscard]] FinishedReply result() override;

  private:
    [[nodiscard]] ReplyStep next(SteadyTime now);
    void readArrived(SteadyTime now);
    [[nodiscard]] std::optional<std::string> readMore(SteadyTime now);
    [[nodiscard]] bool showsSomethingNew();
    [[nodiscard]] SteadyTime nextTime(SteadyTime now) const;

    const ProviderConfig& m_config;
    ProviderTransfer m_transfer;
    ChatStreamReader m_reader;
    ReplyParser m_parser;
    bool m_finished = false;
    std::size_t m_shown = 0;
    SteadyTime m_quietUntil = SteadyTime::min();
    SteadyTime m_lastBytes = SteadyTime::min();
};

} // namespace vorq::gateway
