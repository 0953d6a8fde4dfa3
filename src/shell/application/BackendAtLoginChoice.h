#pragma once

#include "platform/BackendAtLogin.h"
#include "support/async/BlockingThread.h"

#include <QCoroTask>
#include <QObject>

#include <functional>
#include <memory>

namespace vorq {

struct Alert;
class StatusItem;

/// Whether the local backend starts at login, as the status item's menu shows it and the user
/// chooses it there. An alert tells what went wrong. Main thread only; nothing waits but the end.
class BackendAtLoginChoice final : public QObject {
    Q_OBJECT

  public:
    using ShowAlert = std::function<void(const Alert&)>;

    /// The item must outlive this object.
    BackendAtLoginChoice(std::shared_ptr<BackendAtLogin> backend, StatusItem& item,
                         ShowAlert showAlert);

  private:
    void refresh();
    void choose(bool isOn);
    static QCoro::Task<> run(BackendAtLoginChoice* self, bool isOn);
    void finish(const BackendAtLogin::Outcome& outcome);

    std::shared_ptr<BackendAtLogin> m_backend;
    StatusItem& m_item;
    ShowAlert m_showAlert;
    bool m_isBusy = false;
    BlockingThread m_thread{BlockingThread::AtEnd::Finish};
};

} // namespace vorq
