#include "shell/application/AccessGuide.h"

#include "platform/Defaults.h"
#include "shell/notices/ShellNotifications.h"
#include "shell/status/StatusItem.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString chimedKey = u"vorq.accessGuide.signInChimed"_s;

} // namespace

AccessGuide::AccessGuide(Services services) : m_services(std::move(services)) {}

AccessGuide::~AccessGuide() {
    if (m_timer) m_services.clock.cancel(*m_timer);
}

void AccessGuide::guidePanelAccessFromNotification() {
    if (m_timer || !m_services.statusItem.isInTray()) return;
    m_isSignInPending = !m_services.defaults.boolean(chimedKey).value_or(false);
    if (m_isSignInPending) m_services.defaults.setBoolean(chimedKey, true);
    emit m_services.notifications.vorqSuppressPanelOutsideClose(true);
    m_services.yieldPanelFocus();
    m_timer = m_services.clock.after(menuDelay, [this] { openMenu(); });
}

void AccessGuide::openMenu() {
    m_timer = m_services.clock.after(chimeDelay, [this] {
        m_timer.reset();
        playPendingAccessGuideChime();
    });
    m_services.openStatusItemMenu();
}

void AccessGuide::playPendingAccessGuideChime() {
    if (std::exchange(m_isSignInPending, false)) m_services.statusItem.chimeSignIn();
}

} // namespace vorq
