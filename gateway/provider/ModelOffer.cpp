#include "provider/ModelOffer.h"

#include "engine/ReadyReply.h"
#include "provider/ProviderError.h"
#include "provider/ProviderTransfer.h"
#include "support/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace vorq::gateway {
namespace {

using nlohmann::json;

/// What providers list too, but nobody can talk to.
constexpr std::array<std::string_view, 12> kOtherKinds = {
    "embed", "whisper", "tts", "dall-e",     "moderation", "rerank",
    "image", "audio",   "ocr", "transcribe", "realtime",   "diffusion"};

bool isForTalk(const std::string& id) {
    const std::string name = lowered(id);
    return std::ranges::none_of(kOtherKinds,
                                [&](std::string_view kind) { return name.contains(kind); });
}

bool isUsable(const std::string& id) {
    return !id.empty() && id.size() <= ModelOffer::longestId && id == sanitized(id) &&
           std::ranges::none_of(id, [](char c) { return static_cast<unsigned char>(c) < 0x20; }) &&
           isForTalk(id);
}

/// Asks as it is made.
class ModelListReply final : public ReplyStream {
  public:
    ModelListReply(ModelOffer& offer, TransferLoop& loop, ProviderConfig config, SteadyTime now)
        : m_offer(offer),
          m_config(std::move(config)),
          m_transfer(loop, m_config, std::nullopt),
          m_end(now + ModelOffer::patience) {}

    void setCaller(const std::function<void()>& call) override { m_transfer.setCaller(call); }

    [[nodiscard]] ReplyStep step(SteadyTime now) override {
        try {
            return next(now);
        } catch (const EngineError& error) {
            m_offer.take(std::nullopt, now);
            if (std::optional<ModelList> known = m_offer.known()) {
                m_models = *std::move(known);
                return {};
            }
            throw EngineError(error.status, withoutKey(m_config, error.what()));
        }
    }

    [[nodiscard]] FinishedReply result() override { return std::move(m_models); }

  private:
    [[nodiscard]] ReplyStep next(SteadyTime now) {
        while (const std::optional<std::string> bytes = m_transfer.read(now)) {
            m_document += *bytes;
            if (m_document.size() > ModelOffer::longestList) throw unreadable();
            if (now >= m_end) throw tooSlow(m_config);
            if (!bytes->empty()) continue;
            return {.kind = ReplyStep::Kind::Waits,
                    .again = std::min(m_transfer.deadline(), m_end)};
        }
        std::optional<ModelList> models = readModelList(m_document);
        if (!models) throw unreadable();
        m_models = *std::move(models);
        m_offer.take(m_models, now);
        return {};
    }

    static EngineError unreadable() {
        return {502, "The provider's list of models could not be read."};
    }

    ModelOffer& m_offer;
    const ProviderConfig m_config;
    ProviderTransfer m_transfer;
    SteadyTime m_end;
    std::string m_document;
    ModelList m_models;
};

} // namespace

std::optional<ModelList> readModelList(std::string_view document) {
    const json root = json::parse(document, nullptr, false);
    const auto list = root.is_object() ? root.find("data") : root.end();
    if (!root.is_object() || list == root.end() || !list->is_array()) return std::nullopt;
    ModelList models;
    for (const json& item : *list) {
        const auto id = item.is_object() ? item.find("id") : item.end();
        if (!item.is_object() || id == item.end() || !id->is_string()) continue;
        const auto& name = id->get_ref<const std::string&>();
        const bool isKnown = std::ranges::find(models.ids, name) != models.ids.end();
        if (isUsable(name) && !isKnown) models.ids.push_back(name);
        if (models.ids.size() == ModelOffer::mostModels) break;
    }
    return models;
}

ModelOffer::ModelOffer(TransferLoop& loop, const ProviderConfig& config)
    : m_loop(loop), m_config(config) {}

bool ModelOffer::isFresh(SteadyTime now) const {
    const std::scoped_lock lock(m_mutex);
    const SteadyTime::duration rest = m_hasFailed ? SteadyTime::duration(pause) : lifetime;
    return m_asked && now < *m_asked + rest;
}

bool ModelOffer::holds(const std::string& id) const {
    const std::scoped_lock lock(m_mutex);
    return m_models && std::ranges::find(m_models->ids, id) != m_models->ids.end();
}

std::optional<ModelList> ModelOffer::known() const {
    const std::scoped_lock lock(m_mutex);
    return m_models;
}

void ModelOffer::take(const std::optional<ModelList>& models, SteadyTime now) {
    const std::scoped_lock lock(m_mutex);
    m_asked = now;
    m_hasFailed = !models;
    if (models) m_models = models;
}

std::unique_ptr<ReplyStream> ModelOffer::list(SteadyTime now) {
    {
        const std::scoped_lock lock(m_mutex);
        const bool isGood = m_asked && now < *m_asked + lifetime && !m_hasFailed && m_models;
        if (isGood) return std::make_unique<ReadyReply>(*m_models);
    }
    ProviderConfig config = m_config;
    config.endpoint = modelsEndpoint(m_config.endpoint);
    const std::chrono::milliseconds longest = patience;
    config.connectTimeout = std::min(config.connectTimeout, longest);
    config.replyTimeout = std::min(config.replyTimeout, longest);
    config.idleTimeout = std::min(config.idleTimeout, longest);
    return std::make_unique<ModelListReply>(*this, m_loop, std::move(config), now);
}

} // namespace vorq::gateway
