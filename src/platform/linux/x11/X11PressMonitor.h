#pragma once

#include "platform/PressMonitor.h"
#include "platform/linux/x11/X11Events.h"

#include <optional>
#include <vector>

class QMouseEvent;
class QWindow;

namespace vorq {

class Screens;

/// Presses as the X server's input extension tells them: from all devices, whoever they are for,
/// and also while a menu holds the pointer. Without that extension none are told. Who begins to
/// drag something takes the selection XdndSelection. Needs a QGuiApplication.
class X11PressMonitor final : public PressMonitor {
  public:
    /// The screens must outlive the monitor.
    explicit X11PressMonitor(const Screens& screens, QObject* parent = nullptr);

    [[nodiscard]] PortSupport supported() const override;
    void start() override;
    void stop() override;
    void startKeys() override;
    void stopKeys() override;
    void catchUp() override { m_events.catchUp(); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    using Window = X11Connection::Window;

    /// What Qt knows of a press on a window of ours.
    struct OwnPress {
        std::uint64_t time = 0; // on the server
        QPointF at;
        const QWindow* window = nullptr;
    };

    void handleOwnPress(const QWindow& window, const QMouseEvent& event);
    void select();
    void watchDrags(bool isOn);
    void take(const xcb_generic_event_t& event);
    void takeInput(const xcb_ge_generic_event_t& event);
    void tell(PressedButton button, std::uint64_t time);
    [[nodiscard]] ScreenPress pressUnderPointer() const;
    [[nodiscard]] PressedSurface foreignSurface(const std::vector<Window>& windows) const;
    [[nodiscard]] std::vector<Window> windowsUnderPointer() const;
    [[nodiscard]] bool hasType(Window window, const std::vector<X11Connection::Atom>& types) const;

    const Screens& m_screens;
    std::optional<OwnPress> m_ownPress; // while it is dealt with
    int m_starts = 0;                   // that were not stopped
    int m_keyStarts = 0;                // likewise
    std::optional<std::uint64_t> m_lastTime;
    ScreenPress m_lastPress;
    X11Connection m_requests;
    X11Events m_events;
    /// Of the input extension; 0 where it is absent.
    std::uint8_t m_opcode = 0;
    /// Of the extension that tells of selections; 0 where it is absent.
    std::uint8_t m_firstSelectionEvent = 0;
    X11Connection::Atom m_dragAtom = 0;
    X11Connection::Atom m_typeAtom = 0;
    std::vector<X11Connection::Atom> m_barTypes;
    std::vector<X11Connection::Atom> m_menuTypes;
};

} // namespace vorq
