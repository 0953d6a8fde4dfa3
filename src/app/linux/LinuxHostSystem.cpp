#include "app/linux/LinuxHostSystem.h"

#include "platform/linux/LinuxDesktopPlatform.h"
#include "platform/linux/atspi/AtSpiSwitch.h"
#include "platform/linux/atspi/HangingBusGuard.h"
#include "platform/linux/desktop/ProcessStart.h"
#include "platform/linux/desktop/SessionKind.h"
#include "platform/linux/desktop/XdgPaths.h"
#include "platform/linux/x11/X11Connection.h"

#include <QDBusConnection>
#include <QProcessEnvironment>

namespace vorq {
namespace {

// Chooses the X server of a Wayland session while an application object is made. Programs that are
// started later choose for themselves.
class XServerChoice {
  public:
    XServerChoice() {
        const auto environment = QProcessEnvironment::systemEnvironment();
        if (prefersXServer(environment, X11Connection().isUsable()))
            m_isMade = qputenv(variable, "xcb");
    }
    ~XServerChoice() {
        if (m_isMade) qunsetenv(variable);
    }
    XServerChoice(const XServerChoice&) = delete;
    XServerChoice& operator=(const XServerChoice&) = delete;

  private:
    static constexpr const char* variable = "QT_QPA_PLATFORM";

    bool m_isMade = false;
};

class LinuxApplicationBirth final : public ApplicationBirth {
  public:
    explicit LinuxApplicationBirth(const QDBusConnection& bus) : m_guard(bus) {}

  private:
    HangingBusGuard m_guard;
    XServerChoice m_choice;
};

} // namespace

std::unique_ptr<DesktopPlatform> LinuxHostSystem::makePlatform() const {
    return std::make_unique<LinuxDesktopPlatform>();
}

std::optional<Clock::Duration> LinuxHostSystem::startOfThisProcess() const {
    return vorq::startOfThisProcess();
}

std::optional<ProcessId> LinuxHostSystem::frontmostProcess() const {
    if (sessionKind() == SessionKind::Wayland) return std::nullopt;
    const X11Connection server;
    const auto active = server.numbers(server.root(), server.atom("_NET_ACTIVE_WINDOW"));
    if (active.empty() || active.front() == 0) return std::nullopt;
    return server.processOf(active.front());
}

bool LinuxHostSystem::hasScreen() const {
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") ||
           qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || X11Connection().isUsable();
}

QString LinuxHostSystem::lockFolder() const {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return runtime.isEmpty() ? XdgPaths().settingsFolder() : runtime;
}

std::unique_ptr<ApplicationBirth>
LinuxHostSystem::prepareApplication(const QDBusConnection& bus) const {
    return std::make_unique<LinuxApplicationBirth>(bus);
}

std::expected<void, QString> LinuxHostSystem::enableAccessibility() const {
    return switchAccessibilityOn(QDBusConnection::sessionBus());
}

} // namespace vorq
