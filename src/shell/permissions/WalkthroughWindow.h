#pragma once

#include "shell/dialogs/WindowPlacement.h"

#include <QQuickView>

#include <cstdint>
#include <optional>

namespace vorq {

class Compositor;
class Defaults;
class OverlayHints;

/// The window of the walkthrough: as large as its page, as far as the screen has room, above
/// others, in the middle of the screen or where it was left. Where nothing shines through it, it is
/// cut to round corners. Main thread only.
class WalkthroughWindow final : public QQuickView {
    Q_OBJECT

  public:
    static inline const QString identifier = QStringLiteral("vorq.accessibilityWalkthrough");
    /// Where its place is stored: "x y width height".
    static inline const QString placeKey = QStringLiteral("vorq.accessibilityWalkthrough.place");
    /// In points.
    static constexpr double cornerRadius = 26;

    enum class Keyboard : std::uint8_t {
        Takes,
        Leaves, ///< with whoever has it; the window keeps clear of others of ours then
    };

    /// What the system offers; all must outlive the window.
    struct Platform {
        Defaults& defaults;
        Compositor& compositor;
        OverlayHints& hints;
    };

    /// The engine must outlive the window.
    WalkthroughWindow(const Platform& platform, QQmlEngine* engine);
    ~WalkthroughWindow() override;

    void present(Keyboard keyboard);

    /// The most that a page may be in height, in points.
    [[nodiscard]] int tallest() const;

  signals:
    /// The user has closed it, by whatever way the window manager has.
    void closeAsked();
    /// The user has come to it.
    void activated();
    void tallestChanged();

  protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

  private:
    void applyShape();
    void restorePlace(Keyboard keyboard);
    void keepMiddle();
    void place(const QRect& frame);
    void keepPlace();

    Platform m_platform;
    std::optional<QRect> m_place; // nothing until the user has moved it
    QPoint m_middle;              // around which it grows
    QList<QPoint> m_asked;        // upper left corners, the last ones
};

} // namespace vorq
