#include "shell/application/BackendAtLoginChoice.h"

#include "shell/notices/Alert.h"
#include "shell/status/StatusItem.h"

#include <QPointer>

#include <utility>

namespace vorq {

BackendAtLoginChoice::BackendAtLoginChoice(std::shared_ptr<BackendAtLogin> backend,
                                           StatusItem& item, ShowAlert showAlert)
    : m_backend(std::move(backend)), m_item(item), m_showAlert(std::move(showAlert)) {
    connect(&m_item, &StatusItem::menuWillOpen, this, &BackendAtLoginChoice::refresh);
    connect(&m_item, &StatusItem::chosen, this, [this](StatusCommand command) {
        if (command == StatusCommand::EnableBackendAtLogin) choose(true);
        if (command == StatusCommand::DisableBackendAtLogin) choose(false);
    });
}

void BackendAtLoginChoice::refresh() {
    m_item.setBackendAtLogin({.isOffered = m_backend->supported().has_value(),
                              .isOn = m_backend->isOn(),
                              .isBusy = m_isBusy});
}

// Systemd, and the backend that is started, take their time.
void BackendAtLoginChoice::choose(bool isOn) {
    if (std::exchange(m_isBusy, true)) return;
    (void)run(this, isOn);
}

QCoro::Task<> BackendAtLoginChoice::run(BackendAtLoginChoice* self, bool isOn) {
    const QPointer<BackendAtLoginChoice> alive(self);
    const auto change = [backend = self->m_backend, isOn] {
        return isOn ? backend->switchOn() : backend->switchOff();
    };
    const BackendAtLogin::Outcome outcome = co_await self->m_thread.run(change, {});
    if (alive) self->finish(outcome);
}

void BackendAtLoginChoice::finish(const BackendAtLogin::Outcome& outcome) {
    m_isBusy = false;
    refresh();
    if (outcome) return;
    m_showAlert({tr("The local backend"), outcome.error(), {tr("OK")}});
}

} // namespace vorq
