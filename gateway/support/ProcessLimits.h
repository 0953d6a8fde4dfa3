#pragma once

#include <cstddef>

namespace vorq::gateway {

/// Lets this process open as many files as the system grants it. Gives how many that are.
std::size_t raiseFileLimit();

/// Keeps the heap of many threads from growing apart. Before any thread is started.
void boundHeap();

/// Gives back to the system what the heap does not need.
void trimHeap();

} // namespace vorq::gateway
