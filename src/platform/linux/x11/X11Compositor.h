#pragma once

#include "platform/Compositor.h"
#include "platform/linux/x11/X11Events.h"

namespace vorq {

/// Whether a compositing manager runs on the X server, and whether it is one that blurs. Without an
/// X server windows count as translucent, as they are on Wayland.
class X11Compositor final : public Compositor {
  public:
    explicit X11Compositor(QObject* parent = nullptr);

    [[nodiscard]] PortSupport supported() const override;
    [[nodiscard]] Translucency translucency() const override { return m_translucency; }

  private:
    void refresh();
    [[nodiscard]] Translucency read() const;

    X11Connection m_requests;
    X11Events m_events;
    X11Connection::Atom m_selection = 0;
    X11Connection::Atom m_blurAtom = 0;
    Translucency m_translucency = Translucency::None;
};

} // namespace vorq
