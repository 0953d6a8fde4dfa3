#pragma once

#include <vector>

namespace vorq {

/// What a column of a table asks for, in logical pixels.
struct ColumnNeed {
    double natural = 0; // with each of its cells on one line
    double word = 0;    // with none of its words broken; no more than the natural width
};

/// The widths of columns that fill the room. Where not all can have their natural width, narrow
/// ones keep it and the others share the rest by their need; before a word is broken, others give
/// way, and of words that are too long the longest is broken first. Pure function.
[[nodiscard]] std::vector<double> columnWidths(const std::vector<ColumnNeed>& needs, double room);

} // namespace vorq
