#pragma once

#include "platform/Compositor.h"
#include "shell/window/PanelWindow.h"

#include <QQuickView>
#include <QVariantAnimation>

namespace vorq {

class OverlayHints;
class Screens;

/// The panel's window: frameless, above all others, on all workspaces, in no list of windows. Its
/// view fills it. Where nothing shines through it, it is cut to round corners, and the view is to
/// paint to its edges. Main thread only.
class QuickPanelWindow final : public QQuickView, public PanelWindow {
    Q_OBJECT

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

    /// Creates the hidden window, so that showing it is a matter of mapping it. A view that is
    /// loaded by then has its first picture made.
    void prepare();

    /// Frames then change at once.
    void setReducedMotion(bool isReduced) { m_isMotionReduced = isReduced; }

    [[nodiscard]] WindowId id() const override { return winId(); }
    [[nodiscard]] QRectF frame() const override { return m_frame; }
    void setFrame(const QRectF& frame, bool isAnimated) override;
    void orderFront() override;
    void activate() override;
    void orderOut() override;
    [[nodiscard]] bool isOnScreen() const override;
    [[nodiscard]] bool isAnotherActive() const override;
    void setDockDragging(bool isOn) override;
    void setInput(PanelWindowInput* input) override;

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void exposeEvent(QExposeEvent* event) override;

  private:
    void applyTranslucency();
    void followFrame();
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
