#pragma once

#include "platform/Clock.h"
#include "shell/look/StatusImage.h"

#include <functional>
#include <optional>

namespace vorq {

/// What the status item looks like at one moment.
struct StatusFrame {
    StatusImage image = StatusImage::Glyph;
    /// How far the glyph is down: 0 at rest, 1 as far as it goes.
    double drop = 0;

    bool operator==(const StatusFrame&) const = default;
};

/// How a tray lets an item call for attention.
enum class AttentionForm {
    Bounce, ///< the glyph falls and comes back, where it is drawn by us
    Blink,  ///< another image comes and goes, where each goes to the tray over the bus
    Steady, ///< another image stays, for a user who wants nothing to move
};

/// Has the status item call for attention until it is stopped. Main thread only.
class StatusBounce {
  public:
    static constexpr Clock::Duration period = std::chrono::milliseconds(1140);
    static constexpr Clock::Duration frameTime = std::chrono::milliseconds(33);
    static constexpr Clock::Duration lookTime = std::chrono::milliseconds(250);

    struct Tray {
        std::function<void(const StatusFrame&)> show;
        std::function<bool()> hasItem;
    };

    /// The clock and whatever the tray needs must outlive this object.
    StatusBounce(Clock& clock, Tray tray);
    StatusBounce(const StatusBounce&) = delete;
    StatusBounce& operator=(const StatusBounce&) = delete;
    ~StatusBounce();

    /// It ends by itself when the item vanishes from the tray, or after so many periods; never
    /// with none. While it runs another start does nothing.
    void start(AttentionForm form, int periods = 0);

    /// The glyph is at rest then.
    void stop();

    [[nodiscard]] bool isRunning() const { return m_isRunning; }

    /// Of the part of a period that is over, from 0 to 1.
    [[nodiscard]] static double dropAt(double progress);

  private:
    void step();
    [[nodiscard]] bool hasVanished();
    void show(const StatusFrame& frame);
    void cancelTimer();

    Clock& m_clock;
    Tray m_tray;
    bool m_isRunning = false;
    AttentionForm m_form = AttentionForm::Bounce;
    int m_periods = 0;
    Clock::Duration m_begin{0};
    Clock::Duration m_nextLook{0};
    StatusFrame m_shown;
    std::optional<Clock::TimerId> m_timer;
};

} // namespace vorq
