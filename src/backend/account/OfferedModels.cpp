#include "backend/account/OfferedModels.h"

#include "backend/api/VorqAPIService.h"
#include "backend/http/BackendLog.h"
#include "platform/Defaults.h"
#include "support/text/Text.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString offeredKey = u"vorq.offeredModels"_s;

} // namespace

OfferedModels::OfferedModels(VorqAPIService& api, Defaults& defaults)
    : m_api(api), m_defaults(defaults) {}

void OfferedModels::restore() {
    m_ids = m_defaults.strings(offeredKey);
}

void OfferedModels::refresh(const QString& token) {
    if (m_task.isRunning() || trimmed(token).isEmpty()) return;
    m_task.restart(
        [this, token](std::stop_token stop) { return run(this, token, std::move(stop)); });
}

QCoro::Task<> OfferedModels::run(OfferedModels* self, QString token, std::stop_token stop) {
    try {
        const ModelList list = co_await self->m_api.models(token, stop);
        if (!stop.stop_requested()) self->set(list.ids);
    } catch (const BackendError& error) {
        qCDebug(backendLog, "Vorq model list not read: %s", error.what());
    }
}

void OfferedModels::forget() {
    m_task.cancel();
    set({});
}

void OfferedModels::set(const QStringList& ids) {
    if (std::exchange(m_ids, ids) == ids) return;
    m_defaults.apply({{offeredKey, ids.isEmpty() ? QVariant() : QVariant(ids)}});
    emit changed();
}

} // namespace vorq
