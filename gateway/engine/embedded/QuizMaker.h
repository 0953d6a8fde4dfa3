#pragma once

#include "engine/Analysis.h"
#include "engine/Engine.h"

namespace vorq::gateway {

/// A quiz of gap sentences with words of the same text as wrong answers: four questions at least.
/// Throws EngineError where the text has too few different words for that.
[[nodiscard]] Quiz makeQuiz(const QuizRequest& request);

} // namespace vorq::gateway
