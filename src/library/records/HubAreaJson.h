#pragma once

#include "library/json/RecordJson.h"
#include "library/records/HubArea.h"

namespace vorq {

template<>
inline constexpr auto rawStrings<HubArea> =
    std::to_array<std::string_view>({"writing", "research", "study", "personal"});

} // namespace vorq
