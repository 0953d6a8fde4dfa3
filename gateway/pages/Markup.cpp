#include "pages/Markup.h"

#include "support/Utf8.h"

#include <algorithm>
#include <array>

namespace vorq::gateway {
namespace {

std::string escapedHtml(std::string_view text) {
    std::string out;
    for (const char c : sanitized(text)) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&#39;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

/// Elements that hold nothing and have no end tag.
bool isVoid(std::string_view name) {
    constexpr std::array<std::string_view, 4> names = {"input", "meta", "link", "img"};
    return std::ranges::find(names, name) != names.end();
}

} // namespace

Markup::Markup(std::string_view text) : m_html(escapedHtml(text)) {}

Markup Markup::element(std::string_view name, const Attributes& attributes, const Markup& content) {
    std::string html = "<" + std::string(name);
    for (const Attribute& attribute : attributes)
        html += " " + std::string(attribute.name) + "=\"" + escapedHtml(attribute.value) + "\"";
    html += ">";
    if (!isVoid(name)) html += content.m_html + "</" + std::string(name) + ">";
    return Markup(Verbatim{std::move(html)});
}

Markup& Markup::operator+=(const Markup& other) {
    m_html += other.m_html;
    return *this;
}

Markup operator+(Markup one, const Markup& other) {
    one += other;
    return one;
}

} // namespace vorq::gateway
