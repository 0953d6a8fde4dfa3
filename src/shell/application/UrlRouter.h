#pragma once

#include <QList>

class QUrl;

namespace vorq {

class PendingSignIn;
class ShellNotifications;

/// Takes the URLs that the system delivers to where they belong. Main thread only.
class UrlRouter {
  public:
    /// Both must outlive this object.
    UrlRouter(PendingSignIn& signIn, ShellNotifications& notifications)
        : m_signIn(signIn), m_notifications(notifications) {}

    /// Those that are no way back from a sign-in are ignored.
    void open(const QList<QUrl>& urls);

  private:
    void open(const QUrl& url);

    PendingSignIn& m_signIn;
    ShellNotifications& m_notifications;
};

} // namespace vorq
