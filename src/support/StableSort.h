#pragma once

#include <algorithm>
#include <numeric>
#include <vector>

namespace vorq {

/// Sorts so that what is equal keeps its order. (std::stable_sort needs a function that the
/// standard library has deprecated, and which we compile as an error.)
template<typename Value, typename Less>
void stableSort(std::vector<Value>& values, Less isBefore) {
    std::vector<std::size_t> order(values.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        if (isBefore(values[a], values[b])) return true;
        return a < b && !isBefore(values[b], values[a]);
    });
    std::vector<Value> sorted;
    sorted.reserve(values.size());
    for (const std::size_t index : order)
        sorted.push_back(std::move(values[index]));
    values = std::move(sorted);
}

} // namespace vorq
