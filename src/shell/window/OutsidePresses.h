#pragma once

#include "platform/Clock.h"
#include "platform/PressMonitor.h"
#include "platform/WindowId.h"
#include "shell/notices/PanelHold.h"

#include <QObject>

#include <functional>
#include <optional>

namespace vorq {

class ShellNotifications;

/// Tells the presses that are meant to take the panel down from those that are not: presses on
/// something of ours, those that only close a menu of ours, and those that begin to drag something
/// here. Main thread only.
class OutsidePresses final : public QObject {
    Q_OBJECT

  public:
    /// How long a press in a foreign bar may be one on our status item. Then the panel goes.
    static constexpr Clock::Duration statusItemDelay = std::chrono::milliseconds(400);

    /// How long a slow bar may still show the menu of that press, which brings the panel back.
    static constexpr Clock::Duration slowestBar = std::chrono::seconds(10);

    /// All must outlive this object.
    struct Platform {
        Clock& clock;
        PressMonitor& presses;
        PanelHolds& holds;
        ShellNotifications& notifications;
    };
    using IsInside = std::function<bool(const ScreenPress& press)>;

    /// The callback says whether a press is on the panel, or on a dialog of it.
    OutsidePresses(const Platform& platform, IsInside isInside);
    ~OutsidePresses() override;

    /// Presses count from start() to stop().
    void start();
    void stop();

    /// A window of another program has come to the front. One that was not in front before is what
    /// a press in a bar was about.
    void noteFront(WindowId window);

  signals:
    /// After the event.
    void dismissed();

    /// The press that took the panel down was on our status item. Not told once another application
    /// came to the front or Vorq opened its menu by itself.
    void recalled();

  private:
    void handlePress(const ScreenPress& press);
    void handleRelease();
    void handleStatusMenu(bool isOpen);
    void handleSuppression(bool suppress);
    [[nodiscard]] bool isOnMenuOfOurs(const ScreenPress& press) const;
    [[nodiscard]] bool dismissesStatusMenu();
    void awaitStatusItem();
    void awaitSlowBar();
    void recall();
    void forgetSlowBar();
    void dismissLater();
    void forgetPress();

    Platform m_platform;
    IsInside m_isInside;
    bool m_isRunning = false;
    /// A press elsewhere whose release shows whether it was a click.
    bool m_isClickPending = false;
    std::optional<WindowId> m_front;
    std::optional<Clock::TimerId> m_decision;
    /// While the panel is down for a press in a bar that may be slow.
    std::optional<Clock::TimerId> m_slowBar;
    /// While the menu of the status item is open, as far as its end is told.
    PanelHold m_statusMenu;
    PanelHold m_suppression;
};

} // namespace vorq
