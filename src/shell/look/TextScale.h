#pragma once

namespace vorq {

/// What remains to be done of the size of text that the desktop wants, as times the usual. Some
/// desktops hand their text size to X as a pixel ratio, so that everything has grown by it already.
[[nodiscard]] double remainingTextScale(double wanted, double pixelRatio);

} // namespace vorq
