#include "shell/application/UrlRouter.h"

#include "backend/account/PendingSignIn.h"
#include "backend/account/SignInUrl.h"
#include "shell/notices/ShellNotifications.h"

namespace vorq {

void UrlRouter::open(const QList<QUrl>& urls) {
    for (const QUrl& url : urls)
        (void)handleOpenURL(url);
}

bool UrlRouter::handleOpenURL(const QUrl& url) {
    if (const std::optional<QString> handoff = SignInUrl::handoffCode(url)) {
        if (m_signIn.isPending())
            m_signIn.finish(url);
        else
            emit m_notifications.vorqMacHandoffCode(*handoff);
        return true;
    }
    if (!SignInUrl::isOAuthCallback(url) || !m_signIn.isPending()) return false;
    m_signIn.finish(url);
    return true;
}

} // namespace vorq
