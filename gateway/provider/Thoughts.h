#pragma once

#include <string_view>

namespace vorq::gateway {

/// What the user is to see of a reply in which the model may have thought aloud first, between
/// marks such as "<think>" and "</think>" or, where its template opened them, before the closing
/// mark alone. Empty while it thinks. `isComplete` is false as long as more may follow.
[[nodiscard]] std::string_view withoutThoughts(std::string_view reply, bool isComplete);

} // namespace vorq::gateway
