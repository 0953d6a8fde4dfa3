#pragma once

#include "capture/selection/SelectionCapture.h"
#include "platform/ProcessId.h"
#include "platform/Workspace.h"
#include "shell/notices/PanelHold.h"
#include "shell/window/PanelPresence.h"
#include "support/async/TaskSlot.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

namespace vorq {

class FrontmostTracker;
class VorqAppState;

/// Brings the panel up and down, and takes up the selection when the panel hot key asks for it.
/// Without a state nothing happens. Main thread only.
class PanelSummoner final : public QObject {
    Q_OBJECT

  public:
    using MakePanel = std::function<std::unique_ptr<PanelPresence>(VorqAppState&)>;

    /// All must outlive this object.
    struct Ports {
        Workspace& workspace;
        SelectionCapture& capture;
        FrontmostTracker& frontmost;
        const PanelHolds& holds;
        MakePanel makePanel;
    };

    explicit PanelSummoner(Ports ports, QObject* parent = nullptr);
    ~PanelSummoner() override;

    /// The state must outlive this object. The panel is made for the first one.
    void bind(VorqAppState& state);

    /// Shows the panel with the keyboard and takes up what is selected in the application that was
    /// in front, or hides it if it was up and nothing is selected. While a dialog of the panel is
    /// open, panel and keyboard stay as they are. Presses that come before the former is dealt with
    /// wait; the newest of them counts.
    void handlePanelHotKey(std::optional<ProcessId> sourcePID);

    void togglePanel();
    void showPanel();
    /// Leaves the keyboard with whoever has it.
    void showPanelBeside();

    /// Null until a state is bound.
    [[nodiscard]] PanelPresence* panel() const { return m_panel.get(); }

  private:
    using Source = std::optional<ProcessId>;

    void logHotKey(Source source) const;
    [[nodiscard]] bool hasDialog() const { return m_ports.holds.isHeld(PanelHoldKind::Dialog); }
    void startHotKey(Source source);
    static QCoro::Task<> runHotKey(QPointer<PanelSummoner> self, Source source,
                                   std::stop_token stop);
    static QCoro::Task<> takeUpSelection(QPointer<PanelSummoner> self, Source source,
                                         std::stop_token stop);

    Ports m_ports;
    VorqAppState* m_state = nullptr;
    std::unique_ptr<PanelPresence> m_panel;
    std::optional<Source> m_nextHotKey;
    TaskSlot m_hotKeyTask;
};

} // namespace vorq
