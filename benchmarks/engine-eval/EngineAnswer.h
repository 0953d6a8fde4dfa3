#pragma once

#include <string>
#include <string_view>

namespace vorq::evaluation {

/// The sentence that the embedded engine quotes first; empty if it says that it found none.
[[nodiscard]] std::string engineAnswer(std::string_view text, std::string_view question);

} // namespace vorq::evaluation
