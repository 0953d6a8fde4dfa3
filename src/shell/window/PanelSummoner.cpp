#include "shell/window/PanelSummoner.h"

#include "capture/selection/SelectionCapture.h"
#include "capture/source/FrontmostTracker.h"
#include "core/VorqAppState.h"
#include "shell/notices/ShellLog.h"

#include <utility>

namespace vorq {

PanelSummoner::PanelSummoner(Ports ports, QObject* parent)
    : SummonedPanel(parent), m_ports(std::move(ports)) {}

PanelSummoner::~PanelSummoner() = default;

void PanelSummoner::bind(VorqAppState& state) {
    m_state = &state;
    if (!m_panel) m_panel = m_ports.makePanel(state);
}

void PanelSummoner::handlePanelHotKey(std::optional<ProcessId> sourcePID) {
    if (m_state == nullptr) return;
    const std::optional<ProcessId> source = m_ports.frontmost.resolveSourcePID(sourcePID);
    logHotKey(source);
    m_state->hotKeyContext().press(*this, source);
}

bool PanelSummoner::hasDialog() const {
    return m_ports.holds.isHeld(PanelHoldKind::Dialog);
}

void PanelSummoner::logHotKey(std::optional<ProcessId> source) const {
    const auto application = source ? m_ports.workspace.application(*source) : std::nullopt;
    const QString name = application ? application->name : QString();
    const auto truth = [](bool isTrue) { return isTrue ? "true" : "false"; };
    qCInfo(shellLog, "Vorq ⌘⇧A: sourcePID=%s app=%s trusted=%s canAI=%s",
           source ? qUtf8Printable(QString::number(*source)) : "nil",
           name.isEmpty() ? "nil" : qUtf8Printable(name), truth(m_ports.capture.isTrusted()),
           truth(m_state->canUsePanelAI()));
}

void PanelSummoner::togglePanel() {
    if (m_state == nullptr) return;
    if (!m_panel->isPanelVisible())
        showPanel();
    else if (!hasDialog())
        m_panel->hide();
}

void PanelSummoner::showPanel() {
    if (m_state == nullptr) return;
    if (!m_panel->isPanelVisible()) m_state->panel().ensurePanelGreeting();
    m_panel->show();
}

void PanelSummoner::showPanelBeside() {
    if (m_state == nullptr) return;
    if (!m_panel->isPanelVisible()) m_state->panel().ensurePanelGreeting();
    m_panel->showBeside();
}

} // namespace vorq
