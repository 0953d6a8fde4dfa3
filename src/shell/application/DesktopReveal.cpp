#include "shell/application/DesktopReveal.h"

#include "capture/source/LinuxApplications.h"
#include "shell/notices/ShellLog.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Those of channels and helpers begin with one of these and a point.
constexpr std::array browserIdentifiers{
    "com.apple.safari"_L1,
    "com.google.chrome"_L1,
    "company.thebrowser.browser"_L1,
    "com.brave.browser"_L1,
    "com.microsoft.edgemac"_L1,
    "org.mozilla.firefox"_L1,
    "com.operasoftware.opera"_L1,
    "com.vivaldi.vivaldi"_L1,
    "com.apple.safaritechnologypreview"_L1,
};

constexpr std::array browserNames{
    "safari"_L1, "chrome"_L1, "firefox"_L1, "edge"_L1,
    "brave"_L1,  "arc"_L1,    "opera"_L1,   "vivaldi"_L1,
};

} // namespace

bool isLikelyBrowser(const RunningApplication& application) {
    const QString identifier = application.identifier.toLower();
    const auto isOfIt = [&identifier](QLatin1StringView browser) {
        return identifier.startsWith(browser) &&
               (identifier.size() == browser.size() || identifier[browser.size()] == u'.');
    };
    if (std::ranges::any_of(browserIdentifiers, isOfIt)) return true;
    if (isLinuxApplication(ApplicationKind::Browser, application.identifier)) return true;
    const QString name = application.name.toLower();
    return std::ranges::any_of(browserNames,
                               [&name](QLatin1StringView word) { return name.contains(word); });
}

bool DesktopReveal::isVorq(const RunningApplication& application) const {
    return application.process == m_self.process ||
           application.identifier == m_self.bundleIdentifier;
}

std::optional<RunningApplication> DesktopReveal::browserInFront() const {
    const std::optional<ProcessId> process = m_workspace.frontmostProcess();
    auto application = process ? m_workspace.application(*process) : std::nullopt;
    return application && isLikelyBrowser(*application) ? application : std::nullopt;
}

// The others stay: where programs have no place of their own to come back from, to hide them all
// would take the user's work away.
bool DesktopReveal::revealDesktopAfterBrowserSignIn(
    const std::optional<RunningApplication>& opened) {
    const std::optional<RunningApplication> browser = opened ? opened : browserInFront();
    if (!browser || isVorq(*browser)) return false;
    const PortSupport hidden = m_workspace.hide(browser->process);
    if (!hidden) qCInfo(shellLog, "Vorq leaves the browser: %s", qUtf8Printable(hidden.error()));
    return hidden.has_value();
}

} // namespace vorq
