#pragma once

#include "support/RawNames.h"

#include <array>

namespace vorq {

/// What is closed in this release and can be opened ahead of time.
enum class Preview { Hub, Writing, Watch };

inline constexpr std::array allPreviews = {Preview::Hub, Preview::Writing, Preview::Watch};

/// As commands and settings name them.
inline constexpr auto previewNames = rawNames<Preview>(
    {{Preview::Hub, "hub"}, {Preview::Writing, "writing"}, {Preview::Watch, "watch"}});

} // namespace vorq
