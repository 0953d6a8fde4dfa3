#pragma once

#include "library/HubArea.h"
#include "library/RecordJson.h"

namespace vorq {

template<>
inline constexpr auto rawStrings<HubArea> =
    std::to_array<std::string_view>({"writing", "research", "study", "personal"});

} // namespace vorq
