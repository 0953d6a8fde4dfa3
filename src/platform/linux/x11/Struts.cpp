#include "platform/linux/x11/Struts.h"

#include <algorithm>
#include <array>

namespace vorq {
namespace {

using Edge = Strut::Edge;

constexpr std::array edges{Edge::Left, Edge::Right, Edge::Top, Edge::Bottom};

bool isUpright(Edge edge) {
    return edge == Edge::Left || edge == Edge::Right;
}

QRect areaOf(const Strut& strut, QSize desktop) {
    const int length = strut.end - strut.start + 1;
    switch (strut.edge) {
    case Edge::Left:
        return {0, strut.start, strut.depth, length};
    case Edge::Right:
        return {desktop.width() - strut.depth, strut.start, strut.depth, length};
    case Edge::Top:
        return {strut.start, 0, length, strut.depth};
    case Edge::Bottom:
        return {strut.start, desktop.height() - strut.depth, length, strut.depth};
    }
    return {};
}

QRect without(const QRect& area, const QRect& taken, Edge edge) {
    QRect rest = area;
    switch (edge) {
    case Edge::Left:
        rest.setLeft(taken.right() + 1);
        break;
    case Edge::Right:
        rest.setRight(taken.left() - 1);
        break;
    case Edge::Top:
        rest.setTop(taken.bottom() + 1);
        break;
    case Edge::Bottom:
        rest.setBottom(taken.top() - 1);
        break;
    }
    return rest;
}

// Any program can declare any number.
int within(std::uint32_t number, int last) {
    return std::clamp(static_cast<int>(number), 0, std::max(last, 0));
}

} // namespace

std::vector<Strut> readStruts(const std::vector<std::uint32_t>& partial,
                              const std::vector<std::uint32_t>& whole, QSize desktop) {
    const bool isPartial = partial.size() >= 12;
    const std::vector<std::uint32_t>& numbers = isPartial ? partial : whole;
    std::vector<Strut> struts;
    if (numbers.size() < edges.size()) return struts;
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const int depth = static_cast<int>(numbers[i]);
        if (depth <= 0) continue;
        const int last = (isUpright(edges[i]) ? desktop.height() : desktop.width()) - 1;
        const int across = isUpright(edges[i]) ? desktop.width() : desktop.height();
        struts.push_back({.edge = edges[i],
                          .depth = std::min(depth, across),
                          .start = isPartial ? within(numbers[4 + 2 * i], last) : 0,
                          .end = isPartial ? within(numbers[5 + 2 * i], last) : last});
    }
    return struts;
}

QRect freeOfStruts(const QRect& monitor, QSize desktop, const std::vector<Strut>& struts) {
    QRect rest = monitor;
    for (const Strut& strut : struts) {
        const QRect taken = areaOf(strut, desktop) & monitor;
        if (taken.isEmpty()) continue;
        const int depth = isUpright(strut.edge) ? taken.width() : taken.height();
        const int extent = isUpright(strut.edge) ? monitor.width() : monitor.height();
        if (2 * depth > extent) continue;
        rest &= without(monitor, taken, strut.edge);
    }
    return rest;
}

} // namespace vorq
