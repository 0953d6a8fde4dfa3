#pragma once

#include "platform/Compositor.h"
#include "shell/overlay/OverlayWindow.h"

#include <QQuickView>

namespace vorq {

class OverlayHints;
class Screens;

/// The window of a callout: frameless, above all others, on all workspaces, in no list of windows,
/// and without the keyboard unless it is asked to take it. What is pressed beside the callout goes
/// to what lies below. Where nothing shines through it, it is cut to the callout's form.
///
/// Its view has the size of the callout as its implicit one, room of `margin` around it, and an
/// arrow of the sizes below; a function layOut() brings its sizes up to date. Main thread only.
class QuickOverlayWindow final : public QQuickView, public OverlayWindow {
    Q_OBJECT

  public:
    /// In points.
    static constexpr double cornerRadius = 22;
    static constexpr QSizeF arrow{40, 13};

    /// What the system offers; all must outlive the window.
    struct Platform {
        Screens& screens;
        Compositor& compositor;
        OverlayHints& hints;
    };

    /// The engine must outlive the window.
    QuickOverlayWindow(const Platform& platform, QQmlEngine* engine, int margin);
    ~QuickOverlayWindow() override;

    /// Loads the view and creates the hidden window, so that showing it is a matter of mapping it.
    void prepare(const QUrl& view);

    [[nodiscard]] WindowId id() const override { return winId(); }
    [[nodiscard]] QSizeF wantedSize() override;
    void place(const QRectF& frame, bool pointsUp, double tipX) override;
    void show() override;
    void hide() override { QQuickView::hide(); }
    void takeKeyboard() override;
    void refuseKeyboard() override { setFlag(Qt::WindowDoesNotAcceptFocus, true); }
    void setInput(OverlayWindowInput* input) override { m_input = input; }

  protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void tellSize();
    void applyForm();

    Platform m_platform;
    int m_margin;
    OverlayWindowInput* m_input = nullptr;
    bool m_pointsUp = true;
    double m_tipX = 0;
    bool m_isMeasuring = false;
};

} // namespace vorq
