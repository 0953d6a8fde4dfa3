#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorq::gateway {

struct Attribute {
    std::string_view name;
    std::string value; ///< escaped as it is written
};
using Attributes = std::vector<Attribute>;

/// HTML in which every text is escaped: it is made of nothing but literals of ours, elements and
/// escaped texts.
class Markup {
  public:
    Markup() = default;
    Markup(std::string_view text); // NOLINT(google-explicit-constructor): texts are what pages hold
    Markup(const std::string& text) : Markup(std::string_view(text)) {} // NOLINT
    Markup(const char* text) : Markup(std::string_view(text)) {}        // NOLINT

    /// HTML as it stands in our source.
    template<std::size_t Size>
    [[nodiscard]] static Markup literal(const char (&html)[Size]) {
        return Markup(Verbatim{std::string(html, Size - 1)});
    }
    /// Names of elements and attributes are of ours.
    [[nodiscard]] static Markup element(std::string_view name, const Attributes& attributes,
                                        const Markup& content = {});

    Markup& operator+=(const Markup& other);
    [[nodiscard]] bool isEmpty() const { return m_html.empty(); }
    [[nodiscard]] const std::string& html() const { return m_html; }

  private:
    struct Verbatim {
        std::string html;
    };
    explicit Markup(Verbatim verbatim) : m_html(std::move(verbatim.html)) {}

    std::string m_html;
};

[[nodiscard]] Markup operator+(Markup one, const Markup& other);

} // namespace vorq::gateway
