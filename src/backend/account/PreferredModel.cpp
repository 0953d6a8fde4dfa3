#include "backend/account/PreferredModel.h"

#include "backend/account/ModelCatalogue.h"
#include "backend/api/VorqAPIService.h"
#include "backend/http/BackendLog.h"
#include "platform/Defaults.h"
#include "support/text/Text.h"

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

const QString modelKey = u"vorq.preferredAIModel"_s;
const QString isOfferedKey = u"vorq.preferredAIModelOffered"_s;
const QString userChosenKey = u"vorq.preferredAIModelUserChosen"_s;

QCoro::Task<> sendModel(VorqAPIService& api, QString token, QString id, std::stop_token stop) {
    try {
        co_await api.updatePreferredModel(token, id, stop);
    } catch (const BackendError& error) {
        if (stop.stop_requested()) co_return;
        qCWarning(backendLog, "Vorq preferred model sync failed: %s", error.what());
    }
}

} // namespace

PreferredModel::PreferredModel(VorqAPIService& api, Defaults& defaults, QObject* parent)
    : QObject(parent), m_api(api), m_defaults(defaults), m_offered(api, defaults) {}

PreferredModel::~PreferredModel() = default;

void PreferredModel::setTokenSource(std::function<QString()> tokenSource) {
    m_tokenSource = std::move(tokenSource);
}

bool PreferredModel::isKnown(const QString& id) const {
    return VorqAIModelOption::contains(id) || m_offered.contains(id);
}

void PreferredModel::refreshOffered() {
    if (m_tokenSource) m_offered.refresh(m_tokenSource());
}

void PreferredModel::restore() {
    m_offered.restore();
    const std::optional<QString> stored = m_defaults.string(modelKey);
    if (!stored) return;
    // While nothing is known of the offer, it may still be in it.
    const bool mayBeOffered =
        m_offered.ids().isEmpty() && m_defaults.boolean(isOfferedKey).value_or(false);
    setPreferredAIModelID(mayBeOffered || isKnown(*stored) ? *stored : QString());
}

void PreferredModel::selectPreferredAIModel(const QString& id) {
    // The chosen one stays in the menu, and can be chosen, though it is offered no more.
    const QString known = isKnown(id) || id == m_preferredAIModelID ? id : QString();
    setPreferredAIModelID(known);
    m_defaults.setBoolean(userChosenKey, true);
    persistPreferredModel(known);
}

void PreferredModel::persistPreferredModel(const QString& id) {
    const QString token = m_tokenSource ? m_tokenSource() : QString();
    if (trimmed(token).isEmpty()) return;
    // A choice that is still on its way is overtaken by this one.
    m_sync.restart([&api = m_api, token, id](std::stop_token stop) {
        return sendModel(api, token, id, std::move(stop));
    });
}

void PreferredModel::applyPreferredModelFromSession(const Session& session) {
    const bool userChosen = m_defaults.boolean(userChosenKey).value_or(false);
    const QString wanted = trimmed(session.preferredModel.value_or(QString())).toString();
    if (!userChosen && m_offered.contains(wanted)) return setPreferredAIModelID(wanted);
    const QString id =
        modelFromSession(userChosen, m_preferredAIModelID, session.preferredModel, session.useCase);
    if (id != m_preferredAIModelID) setPreferredAIModelID(id);
}

void PreferredModel::setPreferredAIModelID(const QString& id) {
    const bool changed = id != m_preferredAIModelID;
    m_preferredAIModelID = id.isNull() ? u""_s : id;
    const bool isOffered = !VorqAIModelOption::contains(m_preferredAIModelID);
    // What is stored already costs no write.
    if (m_defaults.string(modelKey) != m_preferredAIModelID ||
        m_defaults.boolean(isOfferedKey).value_or(false) != isOffered)
        m_defaults.apply({{modelKey, m_preferredAIModelID},
                          {isOfferedKey, isOffered ? QVariant(true) : QVariant()}});
    if (changed) emit preferredAIModelIDChanged();
}

} // namespace vorq
