#pragma once

#include <QString>

namespace vorq {

/// Whether a message bus answers who connects to it, within half a second. Qt waits without an end
/// for one that hangs, and all other buses of the process wait with it. One that is not there
/// answers too, with its refusal; so does one that is not on this machine, as far as we know.
[[nodiscard]] bool answersConnections(const QString& busAddress);

} // namespace vorq
