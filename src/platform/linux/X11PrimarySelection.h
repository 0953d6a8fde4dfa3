#pragma once

#include "platform/PrimarySelection.h"
#include "platform/linux/X11Connection.h"

#include <QByteArray>

#include <memory>

namespace vorq {

/// The PRIMARY selection of an X server, on a connection of its own. Other selections are neither
/// read nor written.
class X11PrimarySelection final : public PrimarySelection {
  public:
    /// The most bytes of a text.
    static constexpr qsizetype longestText = qsizetype{4} * 1024 * 1024;

    X11PrimarySelection();
    ~X11PrimarySelection() override;

    [[nodiscard]] std::optional<Highlight> highlightOf(ProcessId process,
                                                       std::stop_token stop) override;

  private:
    [[nodiscard]] X11Connection::Window owner() const;

    std::unique_ptr<X11Connection> m_x11;
};

} // namespace vorq
