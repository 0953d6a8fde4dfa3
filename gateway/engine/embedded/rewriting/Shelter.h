#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// Keeps code in backticks and addresses out of what rules change: each stands as one letter of the
/// private use area in the text until it is restored. A text that has such letters has no shelter.
class Shelter {
  public:
    explicit Shelter(std::string_view text);

    [[nodiscard]] const std::string& text() const { return m_text; }
    /// A changed form of the text with everything back; what was dropped of it stays away.
    [[nodiscard]] std::string restored(std::string_view changed) const;

  private:
    /// Takes a stretch over, with the part of it that begins there sheltered.
    void add(std::string_view stretch, std::string_view part, std::size_t begin);

    std::string m_text;
    std::vector<std::string> m_parts;
};

} // namespace vorq::gateway
