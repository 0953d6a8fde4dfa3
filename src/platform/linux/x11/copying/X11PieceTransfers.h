#pragma once

#include "platform/copying/Pasteboard.h"
#include "platform/linux/x11/X11Connection.h"

#include <chrono>
#include <optional>
#include <vector>

namespace vorq {

/// Hands out what is too long for one property, piece by piece as each is taken away. Nobody is
/// waited for: who takes none for long gets no more. One thread at a time.
class X11PieceTransfers {
  public:
    using Moment = std::chrono::steady_clock::time_point;

    static constexpr qsizetype longestPiece = qsizetype{256} * 1024;
    static constexpr std::chrono::seconds patience{10};

    explicit X11PieceTransfers(X11Connection& x11);

    /// Where the form goes, and what its bytes are.
    struct Target {
        X11Connection::Window window = 0;
        X11Connection::Atom property = 0;
        X11Connection::Atom type = 0;
    };

    /// Puts the bytes into the property, or announces them there.
    void put(const Target& target, const PasteboardForm& form);

    /// A property was taken away.
    void handleTaken(X11Connection::Window window, X11Connection::Atom property);
    /// A window is gone.
    void handleGone(X11Connection::Window window);

    /// Gives up what nobody has taken for long.
    void dropStale(Moment now);
    [[nodiscard]] bool isIdle() const { return m_transfers.empty(); }

  private:
    struct Transfer {
        Target target;
        QByteArray bytes;
        std::uint8_t unit = 8;
        qsizetype done = 0;
        Moment latest;
    };

    void change(const Target& target, std::uint8_t unit, QByteArrayView bytes) const;

    X11Connection& m_x11;
    X11Connection::Atom m_piecewise;
    std::vector<Transfer> m_transfers;
};

} // namespace vorq
