#pragma once

#include "platform/linux/desktop/SessionKind.h"
#include "platform/trust/SessionFacts.h"

#include <QDBusConnection>

namespace vorq {

/// The session by its environment, and its portal by the session bus.
class LinuxSessionFacts final : public SessionFacts {
  public:
    LinuxSessionFacts(SessionKind session, QDBusConnection bus);

    [[nodiscard]] QString name() const override;
    QCoro::Task<PortSupport> portal(std::stop_token stop) override;

  private:
    SessionKind m_session;
    QDBusConnection m_bus;
};

} // namespace vorq
