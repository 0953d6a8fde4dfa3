#pragma once

#include "library/HubArea.h"
#include "library/RecordJson.h"

namespace vorq {

template<>
inline constexpr auto rawStrings<HubArea> =
    std::to_array<QStringView>({u"writing", u"research", u"study", u"personal"});

} // namespace vorq
