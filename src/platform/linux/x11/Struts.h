#pragma once

#include <QRect>
#include <QSize>

#include <cstdint>
#include <optional>
#include <vector>

namespace vorq {

/// Room that a bar takes along one edge of the whole desktop, in pixels.
struct Strut {
    enum class Edge { Left, Right, Top, Bottom };

    Edge edge = Edge::Left;
    int depth = 0;
    /// The stretch of the edge, both ends included.
    int start = 0;
    int end = 0;

    bool operator==(const Strut&) const = default;
};

/// The struts that a window declares: twelve numbers of _NET_WM_STRUT_PARTIAL or, where there is
/// none, four of _NET_WM_STRUT.
[[nodiscard]] std::vector<Strut> readStruts(const std::vector<std::uint32_t>& partial,
                                            const std::vector<std::uint32_t>& whole, QSize desktop);

/// What the struts leave of a monitor. A strut is measured from the edge of the whole desktop, so
/// one of a bar between two monitors reaches across the outer one; it is ignored there.
[[nodiscard]] QRect freeOfStruts(const QRect& monitor, QSize desktop,
                                 const std::vector<Strut>& struts);

} // namespace vorq
