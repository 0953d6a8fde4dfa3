#pragma once

#include "platform/Clock.h"

#include <QPointer>
#include <QProxyStyle>

#include <optional>

class QAction;
class QMenu;

namespace vorq {

/// Leads the eye to an entry of a menu that we draw: its ground pulses in orange, once. Main thread
/// only.
class StatusMenuAttentionChime final : public QProxyStyle {
  public:
    static constexpr Clock::Duration duration = std::chrono::milliseconds(1150);
    static constexpr Clock::Duration frameTime = std::chrono::milliseconds(33);

    /// What the entry looks like at one moment.
    struct Look {
        double alpha = 0; ///< of the orange, from 0 to 1
        double scale = 1;
    };

    /// Becomes the style of the menu. Both must outlive this object.
    StatusMenuAttentionChime(Clock& clock, QMenu& menu);
    ~StatusMenuAttentionChime() override;

    /// With the orange alone and without a pulse, if the user wants nothing to move.
    void play(QAction* on, bool reducesMotion);

    /// While it plays.
    [[nodiscard]] std::optional<Look> look() const;

    /// Of the part of the time that is over, from 0 to 1.
    [[nodiscard]] static Look lookAt(double progress);

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;

  private:
    void step();
    void cancelTimer();

    Clock& m_clock;
    QMenu& m_menu;
    QPointer<QAction> m_entry;
    Look m_look;
    bool m_reducesMotion = false;
    Clock::Duration m_begin{0};
    std::optional<Clock::TimerId> m_timer;
};

} // namespace vorq
