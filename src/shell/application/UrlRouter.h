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

    /// Whether it was one, and so has been dealt with.
    bool handleOpenURL(const QUrl& url);

  private:
    PendingSignIn& m_signIn;
    ShellNotifications& m_notifications;
};

} // namespace vorq
