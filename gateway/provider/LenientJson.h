#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <optional>
#include <string_view>

namespace vorq::gateway {

/// Reads the objects and arrays in what a language model wrote, whatever stands around them.
/// Forgives what small models get wrong: raw line breaks and quotes inside strings, trailing and
/// missing commas, other quotes or none, comments, words of other languages such as None, and an
/// end that never came. Where the text breaks off, the last item of a list is dropped, since it
/// may be half of one; a string that is no item stays as far as it came. Values deeper than 64
/// levels are passed over.
class LenientJson {
  public:
    /// `text` outlives the reader.
    explicit LenientJson(std::string_view text) : m_text(text) {}

    /// The next object or array; nothing at the end.
    [[nodiscard]] std::optional<nlohmann::json> next();
    /// Where the last value began, in bytes.
    [[nodiscard]] std::size_t begin() const { return m_begin; }
    /// Whether the last value lacked its end.
    [[nodiscard]] bool wasCut() const { return m_wasCut; }
    /// Whether it broke off in the midst of a string, and lacks more than its brackets.
    [[nodiscard]] bool endedInText() const { return m_endedInText; }

  private:
    std::string_view m_text;
    std::size_t m_at = 0;
    std::size_t m_begin = 0;
    int m_failures = 0;
    bool m_wasCut = false;
    bool m_endedInText = false;
};

} // namespace vorq::gateway
