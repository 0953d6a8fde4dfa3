#pragma once

#include "platform/PrimarySelection.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11HighlightWatch.h"

#include <QByteArray>

#include <memory>

namespace vorq {

/// The PRIMARY selection of an X server, on a connection of its own. Other selections are neither
/// read nor written. Made on the main thread, from which on it knows where highlights are made.
class X11PrimarySelection final : public PrimarySelection {
  public:
    /// The most bytes of a text.
    static constexpr qsizetype longestText = qsizetype{4} * 1024 * 1024;

    X11PrimarySelection();
    ~X11PrimarySelection() override;

    [[nodiscard]] PortSupport supported() const override;
    [[nodiscard]] std::optional<Highlight> highlightOf(ProcessId process,
                                                       std::stop_token stop) override;

  private:
    [[nodiscard]] X11Connection::Window owner() const;

    X11HighlightWatch m_watch;
    std::unique_ptr<X11Connection> m_x11;
};

} // namespace vorq
