#pragma once

#include "panel/SummonedPanel.h"
#include "platform/ProcessId.h"
#include "platform/Workspace.h"
#include "shell/notices/PanelHold.h"
#include "shell/window/PanelPresence.h"

#include <functional>
#include <memory>
#include <optional>

namespace vorq {

class FrontmostTracker;
class SelectionCapture;
class VorqAppState;

/// Brings the panel up and down, by itself or for the panel's hot key. Without a state nothing
/// happens. Main thread only.
class PanelSummoner final : public SummonedPanel {
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

    /// Gives the press to HotKeyContext, with the application that was in front.
    void handlePanelHotKey(std::optional<ProcessId> sourcePID);

    void togglePanel();
    void showPanel();
    /// Leaves the keyboard with whoever has it.
    void showPanelBeside();

    /// Null until a state is bound.
    [[nodiscard]] PanelPresence* panel() const { return m_panel.get(); }

    [[nodiscard]] bool isUp() const override { return m_panel->isPanelVisible(); }
    [[nodiscard]] bool hasDialog() const override;
    void bringUp() override { m_panel->show(); }
    void takeDown() override { m_panel->hide(); }

  private:
    void logHotKey(std::optional<ProcessId> source) const;

    Ports m_ports;
    VorqAppState* m_state = nullptr;
    std::unique_ptr<PanelPresence> m_panel;
};

} // namespace vorq
