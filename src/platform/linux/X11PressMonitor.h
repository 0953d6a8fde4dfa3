#pragma once

#include "platform/PressMonitor.h"
#include "platform/linux/X11Events.h"

class QWindow;

namespace vorq {

class Screens;

/// Presses as the X server's input extension tells them: from all devices, whoever they are for,
/// and also while a menu holds the pointer. Without that extension none are told. Needs a
/// QGuiApplication.
class X11PressMonitor final : public PressMonitor {
  public:
    /// The screens must outlive the monitor.
    explicit X11PressMonitor(const Screens& screens, QObject* parent = nullptr);

    void start() override { select(true); }
    void stop() override { select(false); }

  private:
    using Window = X11Connection::Window;

    void select(bool isOn);
    void take(const xcb_generic_event_t& event);
    void tell();
    [[nodiscard]] std::vector<Window> windowsUnderPointer() const;
    [[nodiscard]] bool isBar(Window window) const;

    const Screens& m_screens;
    X11Connection m_requests;
    X11Events m_events;
    /// Of the input extension; 0 where it is absent.
    std::uint8_t m_opcode = 0;
    X11Connection::Atom m_typeAtom = 0;
    X11Connection::Atom m_dockAtom = 0;
};

} // namespace vorq
