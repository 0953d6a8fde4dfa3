#include "app/desktop/DesktopSelfTest.h"

#include "app/desktop/DesktopCapture.h"
#include "app/desktop/SessionLimits.h"
#include "core/VorqAppState.h"
#include "platform/AppPaths.h"
#include "platform/DesktopPlatform.h"
#include "platform/tray/TrayHost.h"
#include "platform/trust/TestWindow.h"
#include "shell/selftest/SelfTestServices.h"

#include <QEventLoop>
#include <QUrl>

namespace vorq {

DesktopSelfTest::DesktopSelfTest(const Parts& parts)
    : m_parts(parts),
      m_accessibility(parts.platform.makeAccessibility()),
      m_pasteOver(parts.capture.pasteOverServices(*m_accessibility)),
      m_test(makeSelfTest(
          {.clock = parts.platform.clock(),
           .session = parts.platform.sessionFacts(),
           .limits = [&platform = parts.platform] { return sessionLimits(platform); },
           .accessibility = *m_accessibility,
           .privacy = parts.platform.privacySettings(),
           .tray = [&platform = parts.platform] { return platform.tray().supported(); },
           .notes = parts.platform.notes(),
           .api = parts.state.api(),
           .account = parts.state.account(),
           .workspace = parts.platform.workspace(),
           .window = parts.platform.testWindow(),
           .primary = parts.platform.primarySelection(),
           .highlight = parts.platform.highlightContents(),
           .clipboard = parts.platform.pasteboard(),
           .copyShortcut = parts.capture.copyShortcut(),
           .pasteOver = m_pasteOver,
           .keys = parts.platform.keyPoster(),
           .hotKeys = parts.hotKeys,
           .areHotKeysOfAnother = parts.areHotKeysOfAnother,
           .staysAfterwards = parts.staysAfterwards})) {}

DesktopSelfTest::~DesktopSelfTest() = default;

void DesktopSelfTest::end() {
    if (!m_test->isRunning()) return;
    QEventLoop loop;
    QObject::connect(m_test.get(), &SelfTest::finished, &loop, &QEventLoop::quit);
    m_test->cancel();
    loop.exec();
}

PrivateWords DesktopSelfTest::secrets() const {
    const AccountSession& account = m_parts.state.account();
    PrivateWords words = wordsOf(account, m_parts.platform.paths().home());
    words.add(qEnvironmentVariable("USER"));
    words.add(qEnvironmentVariable("LOGNAME"));
    words.add(QUrl(m_parts.state.api().baseURL()).host());
    return words;
}

} // namespace vorq
