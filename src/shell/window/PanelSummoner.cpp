#include "shell/window/PanelSummoner.h"

#include "capture/source/FrontmostTracker.h"
#include "core/VorqAppState.h"

#include <utility>

namespace vorq {

PanelSummoner::PanelSummoner(Ports ports, QObject* parent)
    : QObject(parent), m_ports(std::move(ports)) {}

PanelSummoner::~PanelSummoner() = default;

void PanelSummoner::bind(VorqAppState& state) {
    m_state = &state;
    if (!m_panel) m_panel = m_ports.makePanel(state);
}

void PanelSummoner::handlePanelHotKey(std::optional<ProcessId> sourcePID) {
    if (m_state == nullptr) return;
    const Source source = m_ports.frontmost.resolveSourcePID(sourcePID);
    logHotKey(source);
    // Two captures at once would take each other's clipboard for the user's.
    if (m_hotKeyTask.isRunning())
        m_nextHotKey = source;
    else
        startHotKey(source);
}

void PanelSummoner::logHotKey(Source source) const {
    const auto application = source ? m_ports.workspace.application(*source) : std::nullopt;
    const QString name = application ? application->name : QString();
    const auto truth = [](bool isTrue) { return isTrue ? "true" : "false"; };
    qInfo("Vorq ⌘⇧A: sourcePID=%s app=%s trusted=%s canAI=%s",
          source ? qUtf8Printable(QString::number(*source)) : "nil",
          name.isEmpty() ? "nil" : qUtf8Printable(name), truth(m_ports.capture.isTrusted()),
          truth(m_state->canUsePanelAI()));
}

void PanelSummoner::startHotKey(Source source) {
    m_hotKeyTask.restart([self = QPointer(this), source](std::stop_token stop) {
        return runHotKey(self, source, std::move(stop));
    });
}

QCoro::Task<> PanelSummoner::runHotKey(QPointer<PanelSummoner> self, Source source,
                                       std::stop_token stop) {
    co_await takeUpSelection(self, source, stop);
    if (!self || stop.stop_requested()) co_return;
    const std::optional<Source> next = std::exchange(self->m_nextHotKey, std::nullopt);
    if (next) self->startHotKey(*next);
}

QCoro::Task<> PanelSummoner::takeUpSelection(QPointer<PanelSummoner> self, Source source,
                                             std::stop_token stop) {
    if (!self || stop.stop_requested()) co_return;
    const bool wasVisible = self->m_panel->isPanelVisible();
    // Before anything else: what is typed from now on is for the panel, and would overwrite what is
    // selected.
    if (!wasVisible || !self->hasDialog()) self->m_panel->show();
    if (!wasVisible) self->m_state->panel().ensurePanelGreeting();
    SelectionCapture& capture = self->m_ports.capture;
    const CapturedText captured = co_await capture.captureSelectedTextForHotKey(source, stop);
    if (!self || stop.stop_requested()) co_return;
    if (wasVisible && captured.isEmpty() && capture.isTrusted()) {
        if (!self->hasDialog()) self->m_panel->hide();
        co_return;
    }
    // The user has hidden the panel meanwhile. What is held back does not wait unseen.
    if (captured.isHeldBack && !self->m_panel->isPanelVisible()) co_return;
    const std::optional<CapturedText> prefilled = captured;
    co_await self->m_state->panel().submitHotKeyContext(source, prefilled, stop);
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
