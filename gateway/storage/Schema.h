#pragma once

#include "storage/Database.h"

namespace vorq::gateway {

/// Creates the tables or brings older ones up to date, in one transaction. Throws DatabaseError, or
/// std::runtime_error when the file was written by a newer version of the program.
void migrate(Database& database);

} // namespace vorq::gateway
