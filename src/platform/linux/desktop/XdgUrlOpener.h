#pragma once

#include "platform/browser/UrlOpener.h"

namespace vorq {

class Clock;

/// Opens addresses by xdg-open. Its application is known once one is in front that the user has
/// chosen for such addresses, within ten seconds.
class XdgUrlOpener final : public UrlOpener {
  public:
    /// Both must outlive this object, and what waits for it unless that is stopped.
    XdgUrlOpener(Clock& clock, Workspace& workspace) : m_clock(clock), m_workspace(workspace) {}

    QCoro::Task<Opened> openInFront(QUrl url, std::stop_token stop) override;
    bool open(const QUrl& url) override;

  private:
    static QCoro::Task<QString> handOver(Clock& clock, QUrl url, std::stop_token stop);
    static QCoro::Task<std::optional<RunningApplication>>
    arrival(Clock& clock, Workspace& workspace, QString identifier, std::stop_token stop);

    Clock& m_clock;
    Workspace& m_workspace;
};

} // namespace vorq
