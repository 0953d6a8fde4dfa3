#pragma once

#include "platform/Compositor.h"
#include "shell/PanelWindow.h"

#include <QQuickView>
#include <QVariantAnimation>

namespace vorq {

class OverlayHints;
class Screens;

/// The panel's window: frameless, above all others, on all workspaces, in no list of windows. Its
/// view fills it. Main thread only.
///
/// The view reads `tier` to know how dense to paint: "blur" and "noblur" for a translucent window,
/// "opaque" where nothing shines through; then the window is cut to round corners and the view
/// fills it to its edges.
class QuickPanelWindow final : public QQuickView, public PanelWindow {
    Q_OBJECT
    Q_PROPERTY(QString tier READ tier NOTIFY tierChanged)
    Q_PROPERTY(bool dockDragging READ isDockDragging NOTIFY dockDraggingChanged)

  public:
    /// In points.
    static constexpr double cornerRadius = 34;

    /// What the system offers; all must outlive the window.
    struct Platform {
        Screens& screens;
        Compositor& compositor;
        OverlayHints& hints;
    };

    /// The engine must outlive the window.
    QuickPanelWindow(const Platform& platform, QQmlEngine* engine);
    ~QuickPanelWindow() override;

    /// Creates the hidden window, so that showing it is a matter of mapping it. Call it when the
    /// view is loaded and the window has its first frame.
    void prepare();

    [[nodiscard]] QString tier() const;
    [[nodiscard]] bool isDockDragging() const { return m_isDockDragging; }

    /// Frames then change at once.
    void setReducedMotion(bool isReduced) { m_isMotionReduced = isReduced; }

    [[nodiscard]] std::uint64_t id() const override { return winId(); }
    [[nodiscard]] QRectF frame() const override { return m_frame; }
    void setFrame(const QRectF& frame, bool isAnimated) override;
    void orderFront() override;
    void activate() override;
    void orderOut() override;
    [[nodiscard]] bool isActive() const override { return QQuickView::isActive(); }
    [[nodiscard]] bool isAnotherActive() const override;
    void setDockDragging(bool isOn) override;
    void setInput(PanelWindowInput* input) override;

  signals:
    void tierChanged();
    void dockDraggingChanged();

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void applyTier();
    bool takeMouse(QMouseEvent& event);
    void releaseGrabs(QMouseEvent& event);
    [[nodiscard]] PanelPressTarget pressTarget(QPointF inWindow) const;

    Platform m_platform;
    PanelWindowInput* m_input = nullptr;
    /// In screen coordinates; where an animation leads to while one runs.
    QRectF m_frame;
    QVariantAnimation m_motion;
    bool m_isMotionReduced = false;
    bool m_isDockDragging = false;
};

} // namespace vorq
