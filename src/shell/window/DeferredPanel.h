#pragma once

#include "platform/Clock.h"
#include "shell/window/PanelPresence.h"

#include <functional>
#include <memory>
#include <optional>

namespace vorq {

/// A panel that is made some time after the launch, a piece at a time, so that the launch does not
/// wait for it. Whoever shows it before gets it at once. Main thread only.
class DeferredPanel final : public PanelPresence {
  public:
    using Make = std::function<std::unique_ptr<PanelPresence>()>;

    /// From the launch until the panel is made; other programs start at the same time as a rule.
    static constexpr Clock::Duration delay = std::chrono::milliseconds(250);
    /// Between two pieces, for what else happens.
    static constexpr Clock::Duration pause = std::chrono::milliseconds(4);

    /// The clock must outlive the panel, and what `make` needs.
    DeferredPanel(Clock& clock, Make make);
    ~DeferredPanel() override;

    [[nodiscard]] bool isPanelVisible() const override;
    void show() override;
    void showBeside() override;
    void hide() override;
    void yieldFocus() override;

  private:
    void proceed();
    void proceedAfter(Clock::Duration wait);
    void make();

    Clock& m_clock;
    Make m_make;
    std::unique_ptr<PanelPresence> m_panel;
    std::optional<Clock::TimerId> m_timer;
};

} // namespace vorq
