#pragma once

#include "platform/copying/Pasteboard.h"
#include "platform/linux/x11/X11Connection.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>
#include <stop_token>

namespace vorq {

/// Reads a selection of an X server, such as the CLIPBOARD, of whoever owns it, as the functions of
/// Pasteboard of the same names say. They block until it is read, at most until the token is
/// stopped; not on the main thread, and not on the one that hands out our own contents.
class X11ClipboardReading {
  public:
    /// The connection is used for nothing else meanwhile.
    X11ClipboardReading(X11Connection& x11, const char* selection, std::stop_token stop);

    using Contents = Pasteboard::Contents;

    [[nodiscard]] Contents contents();
    [[nodiscard]] QString text();
    [[nodiscard]] std::optional<QList<QByteArray>> formNames();
    [[nodiscard]] std::optional<QByteArray> form(const QByteArray& name);

  private:
    using Atom = X11Connection::Atom;

    struct Offer {
        Atom atom = 0;
        QByteArray name;
    };
    using Offers = std::expected<std::vector<Offer>, QString>;

    [[nodiscard]] X11Connection::Window owner() const;
    [[nodiscard]] Offers offers();
    [[nodiscard]] static bool isSecret(const std::vector<Offer>& offers);
    [[nodiscard]] std::vector<Offer> named(std::vector<Atom> atoms) const;
    [[nodiscard]] QByteArray nameOf(Atom atom) const;
    [[nodiscard]] Pasteboard::Contents formsOf(const std::vector<Offer>& offers);

    X11Connection& m_x11;
    Atom m_clipboard;
    std::stop_token m_stop;
};

} // namespace vorq
