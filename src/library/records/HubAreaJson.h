#pragma once

#include "library/json/RecordJson.h"
#include "library/records/HubArea.h"

namespace vorq {

template<>
inline constexpr auto rawStrings<HubArea> = rawNames<HubArea>({{HubArea::Writing, "writing"},
                                                               {HubArea::Research, "research"},
                                                               {HubArea::Study, "study"},
                                                               {HubArea::Personal, "personal"}});

} // namespace vorq
