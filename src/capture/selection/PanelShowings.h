#pragma once

#include <cstdint>

namespace vorq {

/// How often the panel has been shown, and whether it is up. What was highlighted once is captured
/// once a showing.
struct PanelShowings {
    std::uint64_t count = 0;
    bool isVisible = false;

    /// Which showing this is, counted from 1; 0 while the panel is hidden.
    [[nodiscard]] std::uint64_t current() const { return isVisible ? count : 0; }
};

} // namespace vorq
