#pragma once

#include "engine/Engine.h"
#include "provider/ProviderConfig.h"
#include "provider/TransferLoop.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace vorq::gateway {

/// The models in a provider's list that a conversation can be had with, in its order. Nothing if
/// it is no list.
[[nodiscard]] std::optional<ModelList> readModelList(std::string_view document);

/// What models a provider has, asked for every few minutes at most while it tells them.
/// Thread-safe.
class ModelOffer {
  public:
    static constexpr std::chrono::minutes lifetime{5};
    /// Questions that would do with the usual model wait for no list so long after a failure.
    static constexpr std::chrono::seconds pause{30};
    /// Of a list that takes longer, or is longer, nothing is used.
    static constexpr std::chrono::seconds patience{10};
    static constexpr std::size_t longestList = std::size_t{1} * 1024 * 1024;
    static constexpr std::size_t mostModels = 40;
    static constexpr std::size_t longestId = 200;

    /// Both outlive the offer and its replies.
    ModelOffer(TransferLoop& loop, const ProviderConfig& config);

    /// Ends in the list: the one that is known, or a new one once that is too old or the last
    /// question failed. Where that fails, in the old one; where there is none, throws.
    [[nodiscard]] std::unique_ptr<ReplyStream> list(SteadyTime now);
    /// Whether a list has been asked for lately, be it in vain.
    [[nodiscard]] bool isFresh(SteadyTime now) const;
    [[nodiscard]] bool holds(const std::string& id) const;
    /// Nothing if none was ever told.
    [[nodiscard]] std::optional<ModelList> known() const;

    /// What has come of a question; nothing for a failure, which leaves the former list.
    void take(const std::optional<ModelList>& models, SteadyTime now);

  private:
    TransferLoop& m_loop;
    const ProviderConfig& m_config;
    mutable std::mutex m_mutex;
    std::optional<ModelList> m_models;
    std::optional<SteadyTime> m_asked;
    bool m_hasFailed = false;
};

} // namespace vorq::gateway
