#include "shell/panel/PanelOutlet.h"

#include "panel/MessageList.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>

#include <ranges>

namespace vorq {

void PanelOutlet::copyText(const QString& text) const {
    QGuiApplication::clipboard()->setText(text);
}

bool PanelOutlet::copyLastReply() const {
    for (const VorqMessage& message : m_messages.messages() | std::views::reverse) {
        const bool isReply = message.role == MessageRole::Assistant && !message.isWorking &&
                             !message.text.isEmpty() && !readsAsGreeting(message);
        if (!isReply) continue;
        copyText(message.text);
        return true;
    }
    return false;
}

void PanelOutlet::openLink(const QString& address) const {
    const QUrl url(address, QUrl::StrictMode);
    const QString scheme = url.scheme();
    if (!url.isValid()) return;
    if (scheme == u"https" || scheme == u"http" || scheme == u"mailto")
        QDesktopServices::openUrl(url);
}

} // namespace vorq
