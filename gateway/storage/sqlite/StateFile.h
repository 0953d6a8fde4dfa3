#pragma once

#include "storage/sqlite/SqliteDatabase.h"

#include <filesystem>
#include <functional>
#include <string>

namespace vorq::gateway {

/// Tells the user about something that happened to the state file.
using Notice = std::function<void(const std::string& sentence)>;

/// Opens the gateway's state in `folder` (made with mode 0700 if missing), checks it and brings its
/// tables up to date. A damaged file is moved aside under a new name, said through `notice`, and a
/// fresh one takes its place. Throws std::runtime_error with a sentence for the user.
[[nodiscard]] SqliteDatabase openState(const std::filesystem::path& folder, const Notice& notice);

/// The state file inside `folder`.
[[nodiscard]] std::filesystem::path stateFile(const std::filesystem::path& folder);

} // namespace vorq::gateway
