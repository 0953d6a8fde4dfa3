#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/pixels/ScreenCapture.h"

#include <QRect>

#include <optional>

struct xcb_get_geometry_reply_t;

namespace vorq {

/// Reads the pixels of windows of an X server, over shared memory where the server is on this
/// machine. One thread at a time.
class X11WindowPixels {
  public:
    /// The connection must outlive this object.
    explicit X11WindowPixels(const X11Connection& x11) : m_x11(x11) {}

    /// The contents of a window, whatever covers it and however far it is off the screen. Where no
    /// compositor keeps the whole window, its program is waited for to draw what was covered.
    [[nodiscard]] std::expected<WindowPicture, QString> read(X11Connection::Window window,
                                                             const std::stop_token& stop) const;

  private:
    // How pixels lie in memory.
    struct Layout {
        std::int64_t bytesPerPixel = 4;
        std::int64_t bytesPerRow = 0;
    };

    [[nodiscard]] std::optional<Layout> layoutOf(X11Connection::Window window,
                                                 const xcb_get_geometry_reply_t& geometry) const;
    [[nodiscard]] bool hasCompositor() const;
    [[nodiscard]] bool isOnScreen(const QRect& pixels) const;
    [[nodiscard]] bool isCovered(X11Connection::Window window, const QRect& pixels) const;
    [[nodiscard]] X11Connection::Window topLevelOf(X11Connection::Window window) const;

    // Of a drawable, from a corner of it.
    [[nodiscard]] std::optional<WindowPicture> image(std::uint32_t drawable, const QRect& part,
                                                     Layout layout) const;
    [[nodiscard]] std::optional<WindowPicture> sharedImage(std::uint32_t drawable,
                                                           const QRect& part, Layout layout) const;
    [[nodiscard]] std::optional<WindowPicture> sentImage(std::uint32_t drawable, const QRect& part,
                                                         Layout layout) const;
    [[nodiscard]] std::optional<WindowPicture> redirectedImage(X11Connection::Window window,
                                                               const QRect& part, Layout layout,
                                                               const std::stop_token& stop) const;

    const X11Connection& m_x11;
};

} // namespace vorq
