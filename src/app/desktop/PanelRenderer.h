#pragma once

class QProcessEnvironment;

namespace vorq {

/// Whether Qt Quick is to draw by itself and not by OpenGL, which without a graphics processor
/// takes twice the memory, starts later and draws no faster. What the user has set for Qt Quick
/// comes first. Pure function.
[[nodiscard]] bool wantsSoftwareRenderer(const QProcessEnvironment& environment,
                                         bool hasGraphicsProcessor);

/// Chooses how Qt Quick draws on this machine. Before its first window.
void chooseRenderer(bool hasGraphicsProcessor);

} // namespace vorq
