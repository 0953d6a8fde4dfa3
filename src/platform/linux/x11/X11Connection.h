#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <vector>

struct xcb_connection_t;

namespace vorq {

/// A connection of our own to the X server, apart from the one that draws our windows, so that
/// waiting for an answer or selecting events never disturbs them.
///
/// One thread at a time. All requests answer at once with nothing when the connection is broken or
/// the server says no.
class X11Connection {
  public:
    using Window = std::uint32_t;
    using Atom = std::uint32_t;

    /// Connects to the display of the environment.
    X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;
    ~X11Connection();

    /// False if there is no X server, or it has gone.
    [[nodiscard]] bool isUsable() const;

    /// For requests that are not offered here. Null without an X server.
    [[nodiscard]] xcb_connection_t* get() const { return m_connection; }

    [[nodiscard]] Window root() const { return m_root; }

    /// The number of the screen in the sense of X, which is 0 nearly everywhere.
    [[nodiscard]] int screen() const { return m_screen; }

    /// 0 if the connection is broken.
    [[nodiscard]] Atom atom(const QByteArray& name) const;

    /// A property of up to 64 KiB, whatever its type; empty if the window hasn't got it.
    [[nodiscard]] QByteArray property(Window window, Atom name) const;

    /// A property that is a list of 32-bit numbers.
    [[nodiscard]] std::vector<std::uint32_t> numbers(Window window, Atom name) const;

    /// Has this connection told of each change of the root window's properties from now on.
    void watchRootProperties() const;

    /// The process that owns a window or another resource; nothing for one on another machine.
    [[nodiscard]] std::optional<std::int32_t> processOf(Window window) const;

  private:
    xcb_connection_t* m_connection = nullptr;
    Window m_root = 0;
    int m_screen = 0;
};

} // namespace vorq
