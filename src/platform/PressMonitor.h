#pragma once

#include "platform/PortSupport.h"
#include "platform/WindowId.h"

#include <QObject>
#include <QPointF>

namespace vorq {

/// What a mouse button was pressed on.
enum class PressedSurface {
    /// Another program's window, or the desktop.
    Foreign,
    /// A bar of the desktop, which may show our status item without our knowing.
    ForeignBar,
    /// A menu, a list or a tip of another program. A bar that draws the menu of our status item
    /// shows it in one.
    ForeignMenu,
    /// An ordinary window of ours.
    OwnWindow,
    /// A menu, a list or a tip of ours. While one holds the pointer every press is the menu's,
    /// wherever it is.
    OwnMenu,
    OwnStatusItem,
};

enum class PressedButton { Left, Right };

/// A left or right mouse button going down anywhere on the screens.
struct ScreenPress {
    /// In screen coordinates, see Screens.
    QPointF at;
    PressedSurface surface = PressedSurface::Foreign;
    PressedButton button = PressedButton::Left;
    /// The window of ours, and the one that it is a dialog of; 0 for none.
    WindowId window = 0;
    WindowId parent = 0;
};

/// Notices mouse presses, and what becomes of them, anywhere, without taking them from whom they
/// are meant for. Main thread only.
class PressMonitor : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    /// Whether presses are told of wherever they are, and why not. Otherwise only some are.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// Presses are told of from start() to stop(). Several may want them: each start needs a stop
    /// of its own.
    virtual void start() = 0;
    virtual void stop() = 0;

    /// The same for keys.
    virtual void startKeys() = 0;
    virtual void stopKeys() = 0;

    /// Tells of all that has happened up to now before it returns.
    virtual void catchUp() = 0;

  signals:
    void pressed(const vorq::ScreenPress& press);
    /// The left button has gone up, anywhere.
    void released();
    /// A wheel was turned by a step, or two fingers moved as far, anywhere.
    void scrolled();
    /// A key went down, anywhere. Which one is nobody's business.
    void keyPressed();
    /// A program has begun to drag something that can be dropped on others.
    void dragBegan();
};

/// No press is ever told of.
class NoPressMonitor final : public PressMonitor {
  public:
    [[nodiscard]] PortSupport supported() const override {
        return std::unexpected(QStringLiteral("There is no desktop that tells of mouse presses."));
    }
    void start() override {}
    void stop() override {}
    void startKeys() override {}
    void stopKeys() override {}
    void catchUp() override {}
};

} // namespace vorq
