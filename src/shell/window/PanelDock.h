#pragma once

#include <QPointF>
#include <QRectF>

#include <functional>
#include <optional>

namespace vorq {

/// Where the panel can stand on its screen, from left to right.
///
/// All geometry here is in points and screen coordinates: the origin is at the bottom left and y
/// grows upwards, so that the top() of a QRectF is its lower edge.
enum class PanelDockTarget { Left, Center, Right };

/// The panel's frame at a target, on whole points. The visible frame is what a screen leaves free.
[[nodiscard]] QRectF dockFrame(PanelDockTarget target, const QRectF& visibleFrame);

/// The frame made to lie within the visible frame, by moving it and, where it is larger, by
/// shrinking it. An empty visible frame leaves it as it is.
[[nodiscard]] QRectF clampedToScreen(const QRectF& frame, const QRectF& visibleFrame);

/// The target that a window stands at or nearest to.
[[nodiscard]] PanelDockTarget dockFrom(const QRectF& frame, const QRectF& visibleFrame);

/// What lies under the mouse when its button goes down.
enum class PanelPressTarget {
    Plain,
    SelectableText, ///< the room of a text to select in, beside its glyphs
    Glyphs,         ///< its glyphs: the drag is the text's own, however far it goes
    EditableText,
};

/// The left mouse button going down in the panel.
struct PanelPress {
    QPointF at;
    /// Above the lower edge of the window.
    double yInWindow = 0;
    PanelPressTarget target = PanelPressTarget::Plain;
    QRectF windowFrame;
    /// Of the screen that holds the window's centre, else of the window's own; nothing without a
    /// screen.
    std::optional<QRectF> visibleFrame;
    /// Time on any clock that never goes back.
    double seconds = 0;
};

/// What becomes of an event and of the window.
struct PanelDockStep {
    /// The event is dealt with and goes nowhere else.
    bool isSwallowed = false;
    /// The window's new frame; nothing leaves it where it is.
    std::optional<QRectF> frame;
    bool isAnimated = false;

    bool operator==(const PanelDockStep&) const = default;
};

/// Throws the panel from one dock to the next as it is dragged sideways. A press becomes a drag
/// beyond a threshold; a drag moves the panel a little way, and docks it anew once it has gone far
/// or fast enough. Main thread only.
class PanelDockDragSession {
  public:
    enum class Phase { Idle, Pending, Dragging };

    /// In points.
    static constexpr double dragThreshold = 4;
    static constexpr double selectableTextDragThreshold = 22;
    static constexpr double followCap = 56;
    static constexpr double composerPassThroughHeight = 88;

    /// The callback is told when a drag begins and when it is over.
    explicit PanelDockDragSession(std::function<void(bool)> dockDragChanged = {})
        : m_dockDragChanged(std::move(dockDragChanged)) {}

    [[nodiscard]] Phase phase() const { return m_phase; }

    /// Whether a drag is on. It stays on after the panel has docked anew, until the button goes up.
    [[nodiscard]] bool isDockDragging() const { return m_isDockDragging; }

    PanelDockStep mouseDown(const PanelPress& press);
    PanelDockStep mouseDragged(QPointF at, double seconds);
    PanelDockStep mouseUp();

    /// Gives up the drag without moving the window: an event of another window came, or the panel
    /// was hidden.
    void reset();

  private:
    void track(QPointF at, double seconds);
    [[nodiscard]] bool isFlick() const;
    [[nodiscard]] std::optional<PanelDockTarget> targetAt(double dx) const;
    void setDockDragging(bool isOn);

    std::function<void(bool)> m_dockDragChanged;
    Phase m_phase = Phase::Idle;
    bool m_isDockDragging = false;

    // Of the press, while the phase is not idle.
    QPointF m_downAt;
    PanelDockTarget m_startTarget = PanelDockTarget::Left;
    QRectF m_startFrame;
    QSizeF m_windowSize;
    QRectF m_visibleFrame;
    double m_threshold = dragThreshold;

    QPointF m_lastAt;
    double m_lastSeconds = 0;
    /// In points per second.
    QPointF m_velocity;
};

} // namespace vorq
