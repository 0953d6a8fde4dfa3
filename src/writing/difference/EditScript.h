#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vorq {

/// Which elements two sequences have in common, in order.
struct EditScript {
    /// For each element whether it is the other sequence's too. Both have as many.
    std::vector<bool> isKeptOfOld;
    std::vector<bool> isKeptOfNew;
};

/// The script of the fewest edits, by the divide-and-conquer algorithm of Myers ("An O(ND)
/// Difference Algorithm and Its Variations", 1986), in space linear in the sequences. A search that
/// becomes costly goes on from the best that it has met: the time is bounded by the sequences'
/// lengths times a constant, and the script is then a valid one, though maybe not of the fewest.
[[nodiscard]] EditScript editScript(std::span<const std::uint32_t> before,
                                    std::span<const std::uint32_t> after);

} // namespace vorq
