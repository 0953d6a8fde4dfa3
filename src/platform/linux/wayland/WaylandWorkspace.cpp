#include "platform/linux/wayland/WaylandWorkspace.h"

#include "platform/linux/atspi/AtSpiApplications.h"
#include "platform/linux/atspi/AtSpiBus.h"
#include "platform/linux/desktop/ProcessExecutable.h"
#include "support/async/OnPool.h"

#include <QGuiApplication>
#include <QWindow>

#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {

WaylandWorkspace::WaylandWorkspace(Clock& clock, std::shared_ptr<AtSpiBus> bus, QObject* parent)
    : Workspace(parent), m_bus(std::move(bus)), m_frontmost(clock, ::getpid()) {
    connect(&m_frontmost, &WaylandFrontmost::changed, this, &WaylandWorkspace::tell);
    connect(&m_frontmost, &WaylandFrontmost::lost, this, &Workspace::frontmostLost);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, &m_frontmost,
            [this](const QWindow* window) { m_frontmost.setVorqActive(window != nullptr); });
    m_bus->whenFrontChanges(&m_frontmost, [this] {
        const std::optional<ProcessId> front = m_bus->front();
        if (front) learnFocus(*front);
        m_frontmost.setForeign(front);
    });
    m_bus->followWindows();
}

WaylandWorkspace::~WaylandWorkspace() {
    m_end.request_stop();
}

PortSupport WaylandWorkspace::supported() const {
    if (m_bus->isOn()) return {};
    return std::unexpected(
        u"Under Wayland applications are known by the accessibility bus, which is off."_s);
}

std::optional<ProcessId> WaylandWorkspace::frontmostProcess() const {
    return m_frontmost.process();
}

std::optional<WindowId> WaylandWorkspace::activeWindow() const {
    return m_x11.activeWindow();
}

std::optional<RunningApplication> WaylandWorkspace::application(ProcessId process) const {
    if (auto known = m_x11.application(process)) return known;
    const QString executable = executableName(process);
    if (executable.isEmpty()) return std::nullopt;
    const auto entry = m_desktopEntries.ofExecutable(executable);
    return RunningApplication{.process = process,
                              .identifier = entry ? entry->id : executable,
                              .name = entry && !entry->name.isEmpty() ? entry->name : executable};
}

std::optional<ProcessId> WaylandWorkspace::processOf(WindowId window) const {
    return m_x11.processOf(window);
}

void WaylandWorkspace::activate(WindowId window) {
    m_x11.activate(window);
}

PortSupport WaylandWorkspace::hide(ProcessId process) {
    if (m_x11.windowOf(process)) return m_x11.hide(process);
    return std::unexpected(u"Wayland lets no program hide the windows of another."_s);
}

// Once the panel has the keyboard, an application that was in front before Vorq started could no
// longer tell where in it the user was.
void WaylandWorkspace::learnFocus(ProcessId process) const {
    (void)onPool(
        [bus = m_bus, process](const std::stop_token& stop) {
            AtSpiApplications(*bus).learnFocus(process, stop);
        },
        m_end.get_token());
}

// Windows of Wayland have no number that others could use.
void WaylandWorkspace::tell(ProcessId process) {
    const std::optional<WindowId> active = activeWindow();
    const bool isItsOwn = active && processOf(*active) == process;
    emit frontmostChanged(process, isItsOwn ? *active : 0);
}

} // namespace vorq
