#pragma once

#include <QPointF>

#include <optional>

namespace vorq {

/// An item with parts of its own that scroll sideways.
class SidewaysScrolling {
  public:
    SidewaysScrolling() = default;
    SidewaysScrolling(const SidewaysScrolling&) = delete;
    SidewaysScrolling& operator=(const SidewaysScrolling&) = delete;
    virtual ~SidewaysScrolling() = default;

    /// The height of the part at a point of the item; nothing where none is.
    [[nodiscard]] virtual std::optional<double> sidewaysHeightAt(QPointF point) const = 0;
};

} // namespace vorq
