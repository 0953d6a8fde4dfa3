#include "shell/status/MenuBarAttention.h"

#include "platform/Defaults.h"
#include "shell/status/StatusItem.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString needsKey = u"vorq.needsMenuBarAttention"_s;
const QString didShowKey = u"vorq.didShowMenuBarAttention"_s;

} // namespace

MenuBarAttention::MenuBarAttention(const Services& services) : m_services(services) {}

MenuBarAttention::~MenuBarAttention() {
    cancelRetry();
}

void MenuBarAttention::startInstalledMenuBarAttentionIfNeeded(int attempt) {
    cancelRetry();
    if (!m_services.isInstalled) return;
    if (m_services.statusItem.isInTray()) return startNow();
    if (attempt >= mostRetries) return;
    m_retry = m_services.clock.after(retryDelay, [this, attempt] {
        m_retry.reset();
        startInstalledMenuBarAttentionIfNeeded(attempt + 1);
    });
}

// Nothing is stored of either before the first start of an installed copy.
void MenuBarAttention::startNow() {
    if (m_didStartThisLaunch || m_services.statusItem.isCallingForAttention()) return;
    Defaults& defaults = m_services.defaults;
    const bool isFirstStart = !defaults.contains(needsKey) && !defaults.contains(didShowKey);
    if (isFirstStart) defaults.setBoolean(needsKey, true);
    if (!defaults.boolean(needsKey).value_or(false)) return;
    if (defaults.boolean(didShowKey).value_or(false)) return;
    m_didStartThisLaunch = true;
    m_services.statusItem.startAttention();
}

void MenuBarAttention::stop() {
    if (!m_services.statusItem.isCallingForAttention()) return;
    m_services.statusItem.stopAttention();
    m_services.defaults.apply({{needsKey, false}, {didShowKey, true}});
}

void MenuBarAttention::cancelRetry() {
    if (const auto retry = std::exchange(m_retry, std::nullopt)) m_services.clock.cancel(*retry);
}

} // namespace vorq
