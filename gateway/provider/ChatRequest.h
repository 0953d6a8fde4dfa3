#pragma once

#include "engine/Engine.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace vorq::gateway {

/// The bodies of chat completion requests; `model` may be empty.

[[nodiscard]] nlohmann::json promptBody(const PromptRequest& request, const std::string& model);
[[nodiscard]] nlohmann::json analyzeBody(const AnalyzeRequest& request, const std::string& model);
[[nodiscard]] nlohmann::json flashcardsBody(const std::string& text, const std::string& model);
[[nodiscard]] nlohmann::json quizBody(const QuizRequest& request, const std::string& model);

} // namespace vorq::gateway
