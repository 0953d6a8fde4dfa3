#pragma once

#include <functional>

namespace vorq {

/// Called with each record as soon as it is read; may change it.
template<typename Record>
using RecordHook = std::function<void(Record& record)>;

} // namespace vorq
