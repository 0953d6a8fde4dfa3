#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <QByteArray>

#include <cstdint>
#include <expected>
#include <optional>
#include <stop_token>

namespace vorq {

/// Asks the owner of a selection for what it holds, once. It uses a window of its own, so that what
/// comes too late reaches nobody. The window of a request that was given up stays as long as the
/// connection: many programs end when they answer to a window that is gone. The connection must be
/// used for nothing else meanwhile, and select no events that anyone waits for.
class X11SelectionRequest {
  public:
    X11SelectionRequest(X11Connection& x11, X11Connection::Atom selection, std::stop_token stop);
    X11SelectionRequest(const X11SelectionRequest&) = delete;
    X11SelectionRequest& operator=(const X11SelectionRequest&) = delete;
    ~X11SelectionRequest();

    /// What the owner gave for a form.
    struct Converted {
        QByteArray bytes;
        X11Connection::Atom type = 0;
        /// Of how many bits each unit of the bytes is.
        std::uint8_t unit = 8;
    };

    enum class Failure {
        Refused,
        TooLong,
        /// The token was stopped before it was there, or the owner broke off.
        NotInTime,
    };

    /// The contents in one form, of at most so many bytes, also when they come in pieces.
    [[nodiscard]] std::expected<Converted, Failure> convert(X11Connection::Atom form,
                                                            qsizetype mostBytes);

    /// The same of a form by its name, without telling why there is none.
    [[nodiscard]] std::optional<QByteArray> convert(const char* target, qsizetype mostBytes);

  private:
    struct Property {
        Converted contents;
        bool isWhole = false;
    };

    template<typename IsWanted>
    [[nodiscard]] bool waitFor(IsWanted isWanted);
    [[nodiscard]] bool waitForData() const;
    [[nodiscard]] std::optional<Property> takeProperty(qsizetype mostBytes) const;
    [[nodiscard]] std::expected<Converted, Failure> collectPieces(qsizetype mostBytes);

    X11Connection& m_x11;
    X11Connection::Atom m_selection;
    X11Connection::Atom m_property;
    X11Connection::Atom m_piecewise;
    X11Connection::Window m_window = 0;
    bool m_isUnanswered = false;
    std::stop_token m_stop;
    // Readable once the token is stopped; -1 without one.
    int m_stopped;
};

} // namespace vorq
