#pragma once

#include "platform/OverlayHints.h"

#include <cstdint>

struct xcb_connection_t;

namespace vorq {

/// The requests go out on Qt's own connection, so that they reach the server in order with those
/// that map and unmap the window. Does nothing off X11. Needs a QGuiApplication.
class X11OverlayHints final : public OverlayHints {
  public:
    X11OverlayHints();

    [[nodiscard]] PortSupport supported() const override;
    void prepare(WindowId window) override;
    void takeFocus(WindowId window) override;
    void setShape(WindowId window, const std::vector<QRect>& pixels) override;
    void setInputShape(WindowId window, const std::vector<QRect>& pixels) override;
    void setBlurBehind(WindowId window, const std::vector<QRect>& pixels) override;

  private:
    void cut(std::uint8_t kind, WindowId window, const std::vector<QRect>& pixels);

    /// Qt's; null off X11.
    xcb_connection_t* m_connection = nullptr;
    std::uint32_t m_root = 0;
    std::uint32_t m_desktopAtom = 0;
    std::uint32_t m_stateAtom = 0;
    std::uint32_t m_activeWindowAtom = 0;
    std::uint32_t m_blurAtom = 0;
    std::vector<std::uint32_t> m_states;
};

} // namespace vorq
