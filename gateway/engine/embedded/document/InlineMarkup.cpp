#include "engine/embedded/document/Document.h"
#include "support/Utf8.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace vorq::gateway {
namespace {

constexpr std::size_t kFarthest = 600; // bytes; no link, tag or code span is looked at beyond

constexpr auto kTags = std::to_array<std::string_view>({
    "a",    "abbr",   "b",     "big",     "blockquote", "body",  "br",      "center", "code",
    "dd",   "del",    "div",   "dl",      "dt",         "em",    "h1",      "h2",     "h3",
    "h4",   "h5",     "h6",    "head",    "hr",         "html",  "i",       "img",    "ins",
    "kbd",  "li",     "mark",  "ol",      "p",          "pre",   "s",       "samp",   "section",
    "font", "small",  "span",  "strong",  "sub",        "sup",   "svg",     "table",  "tbody",
    "td",   "th",     "thead", "tr",      "u",          "ul",    "var",     "video",  "source",
    "main", "header", "nav",   "summary", "details",    "title", "picture",
});

constexpr auto kEntities = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"&amp;", "&"},
    {"&lt;", "<"},
    {"&gt;", ">"},
    {"&quot;", "\""},
    {"&apos;", "'"},
    {"&#39;", "'"},
    {"&nbsp;", " "},
});

bool isAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Takes Markdown's inline markers off, one construct after the other.
class InlineReader {
  public:
    explicit InlineReader(std::string_view text) : m_text(text) { m_out.reserve(text.size()); }

    std::string read() {
        while (m_at < m_text.size()) {
            if (!readsEscape() && !readsCode() && !readsImage() && !readsLink() && !readsAngles() &&
                !readsEntity() && !readsEmphasis()) {
                m_out += m_text[m_at++];
            }
        }
        return std::move(m_out);
    }

  private:
    [[nodiscard]] std::string_view rest(std::size_t from = 0) const {
        return m_text.substr(std::min(m_at + from, m_text.size()), kFarthest);
    }
    [[nodiscard]] bool isWordAt(std::size_t i) const {
        return i < m_text.size() && isWordCharacter(decodeAt(m_text, i).value);
    }
    [[nodiscard]] bool isBlankAt(std::size_t i) const {
        return i >= m_text.size() || m_text[i] == ' ';
    }

    bool readsEscape() {
        constexpr std::string_view escapable = "\\`*_{}[]()#+-.!<>|~";
        if (m_text[m_at] != '\\' || m_at + 1 >= m_text.size() ||
            !escapable.contains(m_text[m_at + 1])) {
            return false;
        }
        m_out += m_text[m_at + 1];
        m_at += 2;
        return true;
    }

    /// Code is kept to the letter, without the marks around it.
    bool readsCode() {
        if (m_text[m_at] != '`') return false;
        const std::size_t marks =
            std::min(m_text.find_first_not_of('`', m_at), m_text.size()) - m_at;
        const std::string_view mark = m_text.substr(m_at, marks);
        const std::size_t end = rest(marks).find(mark);
        m_at += marks;
        if (end == std::string_view::npos) return true;
        m_out += trimmed(m_text.substr(m_at, end));
        m_at += end + marks;
        return true;
    }

    /// The length of "(address)" or "[name]" behind the bracket that closes at `close`, or 0.
    [[nodiscard]] static std::size_t targetLength(std::string_view text, std::size_t close) {
        if (close + 1 >= text.size()) return 0;
        const char open = text[close + 1];
        if (open != '(' && open != '[') return 0;
        const std::size_t end = text.find(open == '(' ? ')' : ']', close + 2);
        return end == std::string_view::npos ? 0 : end - close;
    }

    /// A picture is left out, and a link around nothing but a picture with it.
    bool readsImage() {
        const bool isLinked = rest().starts_with("[![");
        if (!isLinked && !rest().starts_with("![")) return false;
        const std::string_view image = rest(isLinked ? 1 : 0);
        const std::size_t close = image.find(']');
        const std::size_t target = close == std::string_view::npos ? 0 : targetLength(image, close);
        if (target == 0) return false;
        std::size_t length = close + target + 1;
        if (isLinked && image.substr(length).starts_with(']')) {
            length += 2 + targetLength(image, length);
        }
        m_at += length;
        return true;
    }

    bool readsLink() {
        if (m_text[m_at] != '[') return false;
        const std::string_view link = rest();
        if (link.starts_with("[^")) {
            const std::size_t end = link.find(']');
            if (end == std::string_view::npos) return false;
            m_at += end + 1;
            return true;
        }
        const std::size_t close = link.find_first_of("[]", 1);
        if (close == std::string_view::npos || link[close] == '[') return false;
        const std::size_t target = targetLength(link, close);
        if (target == 0) return false;
        m_out += withoutInlineMarkup(link.substr(1, close - 1));
        m_at += close + 1 + target;
        return true;
    }

    /// HTML tags go; an address keeps to itself what stands in its angle brackets.
    bool readsAngles() {
        if (m_text[m_at] != '<') return false;
        const std::string_view tag = rest();
        const std::size_t end = tag.find('>');
        if (end == std::string_view::npos) return false;
        const std::string_view inside = tag.substr(1, end - 1);
        const bool isAddress =
            !inside.contains(' ') && (inside.contains("://") || inside.contains('@'));
        if (isAddress) {
            m_out += inside;
        } else if (!isTag(inside)) {
            return false;
        } else if (!m_out.empty() && inside.starts_with("br")) {
            m_out += ' ';
        }
        m_at += end + 1;
        return true;
    }

    [[nodiscard]] static bool isTag(std::string_view inside) {
        if (inside.starts_with('/')) inside.remove_prefix(1);
        std::size_t end = 0;
        while (end < inside.size() && (isAsciiLetter(inside[end]) ||
                                       (end > 0 && inside[end] <= '9' && inside[end] >= '0'))) {
            ++end;
        }
        const bool closed = end == inside.size() || inside[end] == ' ' || inside[end] == '/';
        return closed && std::ranges::find(kTags, lowered(inside.substr(0, end))) != kTags.end();
    }

    bool readsEntity() {
        if (m_text[m_at] != '&') return false;
        const auto entity = std::ranges::find_if(
            kEntities, [&](const auto& entry) { return rest().starts_with(entry.first); });
        if (entity == kEntities.end()) return false;
        m_out += entity->second;
        m_at += entity->first.size();
        return true;
    }

    bool readsEmphasis() {
        if (rest().starts_with("~~")) {
            m_at += 2;
            return true;
        }
        const char c = m_text[m_at];
        if (c != '*' && c != '_') return false;
        const bool insideWord = m_at > 0 && isWordAt(m_at - 1) && isWordAt(m_at + 1);
        const bool standsAlone = isBlankAt(m_at + 1) && (m_at == 0 || m_text[m_at - 1] == ' ');
        if ((c == '_' && insideWord) || standsAlone || isBetweenDigits()) return false;
        ++m_at;
        return true;
    }

    [[nodiscard]] bool isBetweenDigits() const {
        const auto isDigit = [&](std::size_t i) {
            return i < m_text.size() && m_text[i] >= '0' && m_text[i] <= '9';
        };
        return m_at > 0 && isDigit(m_at - 1) && isDigit(m_at + 1);
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    std::string m_out;
};

} // namespace

std::string withoutInlineMarkup(std::string_view text) {
    return InlineReader(text).read();
}

} // namespace vorq::gateway
