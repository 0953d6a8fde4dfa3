#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vorq::gateway {

/// The options of a question as a model wrote them. Those without a text are dropped, but the
/// answer still counts them.
class QuizOptions {
  public:
    /// `question` is a JSON object.
    explicit QuizOptions(const nlohmann::json& question);

    [[nodiscard]] const std::vector<std::string>& texts() const { return m_texts; }
    /// The place in texts() of the option that the question names as right, by index, letter or
    /// text. Nothing if it names none of them.
    [[nodiscard]] std::optional<std::size_t> answerOf(const nlohmann::json& question) const;

  private:
    [[nodiscard]] std::optional<std::size_t> placeOf(std::optional<std::size_t> index) const;
    [[nodiscard]] std::optional<std::size_t> placeOfText(const std::string& text) const;
    [[nodiscard]] std::optional<std::size_t> placeNamedBy(const nlohmann::json& value,
                                                          bool isIndex) const;

    std::vector<std::string> m_texts;
    /// Where each option as written stands in texts(); nothing for one that was dropped.
    std::vector<std::optional<std::size_t>> m_places;
};

} // namespace vorq::gateway
