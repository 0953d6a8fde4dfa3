#pragma once

#include <cstdint>

namespace vorq {

class X11Connection;

/// The input extension of the X server, by which presses are told whoever they are for; its number
/// for the connection, or 0 where it is absent or too old.
[[nodiscard]] std::uint8_t rawInputOpcode(const X11Connection& connection);

/// Has the connection told of these raw events of all devices from now on, and of no others.
void selectRawInput(const X11Connection& connection, std::uint32_t mask);

} // namespace vorq
