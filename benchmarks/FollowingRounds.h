#pragma once

#include "library/records/SavedNote.h"

#include <string>
#include <vector>

namespace vorq::bench {

/// Prints for how much processor time a save of another program holds the thread of a list of these
/// notes: when the file is read on another thread, and when it is read there and then.
void printFollowing(const std::string& caseName, const std::vector<SavedNote>& notes, int rounds);

} // namespace vorq::bench
