#include "ui/reply/ColumnWidths.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <numeric>

namespace vorq {
namespace {

using Widths = std::vector<double>;

double sumOf(const Widths& widths) {
    return std::accumulate(widths.begin(), widths.end(), 0.0);
}

Widths each(const std::vector<ColumnNeed>& needs,
            const std::function<double(const ColumnNeed&)>& width) {
    Widths widths;
    widths.reserve(needs.size());
    std::ranges::transform(needs, std::back_inserter(widths), width);
    return widths;
}

// The largest part, from none to all, with which the widths fit the room; they grow with it.
Widths largestFitting(double all, double room, const std::function<Widths(double)>& widthsWith) {
    constexpr int steps = 40; // to far below a pixel
    double fits = 0;
    for (int step = 0; step < steps; ++step) {
        const double middle = (fits + all) / 2;
        (sumOf(widthsWith(middle)) <= room ? fits : all) = middle;
    }
    return widthsWith(fits);
}

Widths withWholeWords(const std::vector<ColumnNeed>& needs, double room) {
    Widths words = each(needs, [](const ColumnNeed& need) { return need.word; });
    if (sumOf(words) <= room) return words;
    return largestFitting(room, room, [&](double most) {
        return each(needs, [=](const ColumnNeed& need) { return std::min(need.word, most); });
    });
}

// What no column goes below.
Widths leastWidths(const std::vector<ColumnNeed>& needs, double room) {
    const Widths words = withWholeWords(needs, room);
    const double fair = room / static_cast<double>(needs.size());
    Widths least = words;
    for (std::size_t i = 0; i < needs.size(); ++i)
        if (needs[i].natural <= fair) least[i] = needs[i].natural;
    return sumOf(least) <= room ? least : words;
}

} // namespace

std::vector<double> columnWidths(const std::vector<ColumnNeed>& needs, double room) {
    if (needs.empty()) return {};
    Widths natural = each(needs, [](const ColumnNeed& need) { return need.natural; });
    if (const double spare = room - sumOf(natural); spare >= 0) {
        for (double& width : natural)
            width += spare / static_cast<double>(needs.size());
        return natural;
    }
    const Widths least = leastWidths(needs, room);
    return largestFitting(1, room, [&](double part) {
        Widths widths = least;
        for (std::size_t i = 0; i < needs.size(); ++i)
            widths[i] = std::max(widths[i], part * needs[i].natural);
        return widths;
    });
}

} // namespace vorq
