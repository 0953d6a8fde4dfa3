#pragma once

#include <cstdlib>
#include <memory>

namespace vorq {

/// Gives back what xcb has allocated.
struct FreeX11Memory {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, an event or an error of xcb; null if there is none.
template<typename Reply>
using X11Reply = std::unique_ptr<Reply, FreeX11Memory>;

} // namespace vorq
