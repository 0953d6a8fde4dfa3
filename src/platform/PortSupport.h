#pragma once

#include <QString>

#include <expected>

namespace vorq {

/// Whether a port works in this session. The error is a sentence for the user that says why not;
/// such a port does nothing, or less than its contract.
using PortSupport = std::expected<void, QString>;

} // namespace vorq
