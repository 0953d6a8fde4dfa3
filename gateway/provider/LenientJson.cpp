#include "provider/LenientJson.h"

#include "provider/LenientText.h"
#include "support/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace vorq::gateway {
namespace {

using nlohmann::json;

constexpr int kDeepestValue = 64;
// Each costs a pass over the text.
constexpr int kMostFailures = 64;
constexpr std::size_t kLongestKey = 200;
constexpr std::string_view kSpaces = " \t\r\n";
constexpr std::string_view kFence = "```";
constexpr std::array<std::string_view, 5> kStringQuotes = {"\"", "'", "“", "”", "„"};

enum class Place { Key, Member, Item };

bool isKeyCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-';
}

/// Reads one value that begins with a bracket.
class ValueReader {
  public:
    ValueReader(std::string_view text, std::size_t at) : m_text(text), m_at(at) {}

    /// Nothing for what turns out to be no JSON.
    std::optional<json> read() {
        json result = value(Place::Item);
        return m_hasFailed ? std::nullopt : std::optional(std::move(result));
    }
    [[nodiscard]] std::size_t end() const { return m_at; }
    [[nodiscard]] bool wasCut() const { return m_wasCut; }
    [[nodiscard]] bool endedInText() const { return m_endedInText; }

  private:
    [[nodiscard]] bool isAtEnd() const { return m_at >= m_text.size(); }
    [[nodiscard]] bool isAt(std::string_view mark) const {
        return m_text.substr(std::min(m_at, m_text.size())).starts_with(mark);
    }
    [[nodiscard]] char charAt(std::size_t at) const {
        return at < m_text.size() ? m_text[at] : '\0';
    }
    [[nodiscard]] std::size_t behindSpaces(std::size_t at) const {
        return std::min(m_text.find_first_not_of(kSpaces, at), m_text.size());
    }
    /// The length of the quote at a place; 0 if there is none.
    [[nodiscard]] std::size_t quoteAt(std::size_t at) const {
        const std::string_view rest = m_text.substr(std::min(at, m_text.size()));
        const auto quote = std::ranges::find_if(
            kStringQuotes, [rest](std::string_view mark) { return rest.starts_with(mark); });
        return quote == kStringQuotes.end() ? 0 : quote->size();
    }

    void skipComment() {
        const bool isLong = isAt("/*");
        const std::size_t end = isLong ? m_text.find("*/", m_at + 2) : m_text.find('\n', m_at);
        m_at = end == std::string_view::npos ? m_text.size() : end + (isLong ? 2 : 1);
    }
    void skipSpaces() {
        m_at = behindSpaces(m_at);
        while (isAt("//") || isAt("/*") || isAt("#")) {
            skipComment();
            m_at = behindSpaces(m_at);
        }
    }
    void skipSeparators() {
        skipSpaces();
        while (isAt(",")) {
            ++m_at;
            skipSpaces();
        }
    }

    json value(Place place) {
        skipSpaces();
        if (isAtEnd()) {
            m_wasCut = true;
            return nullptr;
        }
        if (isAt("{") || isAt("[")) {
            if (m_openObjects + m_openArrays == kDeepestValue) {
                m_hasFailed = true;
                return nullptr;
            }
            return isAt("{") ? object() : array();
        }
        if (quoteAt(m_at) > 0) return string(place);
        return bare();
    }

    json array() {
        json list = json::array();
        ++m_at;
        ++m_openArrays;
        while (!m_hasFailed) {
            skipSeparators();
            if (isAtEnd()) m_wasCut = true;
            if (m_wasCut || (isAt("}") && m_openObjects > 0)) break;
            const char first = m_text[m_at];
            if (first == ']' || first == '}' || first == ':') ++m_at;
            if (first == ']') break;
            if (first == '}' || first == ':') continue;
            json item = value(Place::Item);
            if (!m_wasCut) list.push_back(std::move(item));
        }
        --m_openArrays;
        return list;
    }

    json object() {
        json members = json::object();
        ++m_at;
        ++m_openObjects;
        while (!m_hasFailed) {
            skipSeparators();
            if (isAtEnd() || isAt(kFence)) m_wasCut = true;
            if (m_wasCut || (isAt("]") && m_openArrays > 0)) break;
            const char first = m_text[m_at];
            if (first == '}' || first == ']') ++m_at;
            if (first == '}') break;
            if (first == ']') continue;
            member(members);
        }
        --m_openObjects;
        return members;
    }

    void member(json& members) {
        const std::optional<std::string> name = key();
        if (m_wasCut) return;
        if (!name || !passColon()) {
            giveUp(members);
            return;
        }
        json found = value(Place::Member);
        if (!m_wasCut || !found.is_null()) members[*name] = std::move(found);
    }

    /// What was read so far counts; from here on nothing can be told apart.
    void giveUp(const json& members) {
        m_hasFailed = m_hasFailed || members.empty();
        m_wasCut = true;
        m_at = m_text.size();
    }

    std::optional<std::string> key() {
        if (quoteAt(m_at) > 0) return string(Place::Key);
        const std::size_t start = m_at;
        while (isKeyCharacter(charAt(m_at)))
            ++m_at;
        if (m_at == start) return std::nullopt;
        m_hasBareKeys = true;
        return std::string(m_text.substr(start, m_at - start));
    }

    bool passColon() {
        skipSpaces();
        if (isAtEnd()) {
            m_wasCut = true;
            return true;
        }
        for (const std::string_view mark : {":", "=>", "="}) {
            if (!isAt(mark)) continue;
            m_at += mark.size();
            return true;
        }
        return false;
    }

    std::string string(Place place) {
        const std::size_t length = quoteAt(m_at);
        const std::string_view open = m_text.substr(m_at, length);
        m_at += length;
        std::string out;
        while (!isAtEnd()) {
            const std::size_t close = closingQuote(open);
            if (close > 0 && endsString(m_at + close, place)) {
                m_at += close;
                return out;
            }
            if (m_text[m_at] == '\\') {
                m_at += appendUnescaped(out, m_text.substr(m_at));
            } else {
                out += m_text[m_at++];
            }
        }
        m_wasCut = true;
        const std::size_t fence = out.rfind('\n');
        m_endedInText = fence == std::string::npos || trimmed(out.substr(fence)) != kFence;
        if (!m_endedInText) out.erase(fence);
        return out;
    }

    /// The length of a quote at this place that goes with the opening one; 0 if there is none.
    [[nodiscard]] std::size_t closingQuote(std::string_view open) const {
        if (open.size() == 1) return m_text[m_at] == open.front() ? 1 : 0;
        return m_text[m_at] == '\'' ? 0 : quoteAt(m_at);
    }

    /// Whether a string may end where this follows its quote, or the quote belongs to the text.
    [[nodiscard]] bool endsString(std::size_t behind, Place place) const {
        if (place == Place::Key) return true;
        const std::size_t next = behindSpaces(behind);
        const std::string_view rest = m_text.substr(next);
        if (rest.empty() || rest.starts_with(kFence) || rest.starts_with("//") ||
            rest.starts_with("/*")) {
            return true;
        }
        if (rest.front() == '}') return m_openObjects > 0;
        if (rest.front() == ']') return m_openArrays > 0;
        if (rest.front() != ',')
            return place == Place::Member ? beginsMember(next) : next > behind && beginsItem(next);
        const std::size_t following = behindSpaces(next + 1);
        const char first = charAt(following);
        if (first == '\0' || first == '}' || first == ']' || first == '/' || first == '#') {
            return true;
        }
        return place == Place::Member ? beginsMember(following) : beginsItem(following);
    }

    /// Whether a name and a colon stand here, or as much of them as fits before the end.
    [[nodiscard]] bool beginsMember(std::size_t at) const {
        std::size_t end = at;
        if (const std::size_t quote = quoteAt(at); quote > 0) {
            const std::size_t last = std::min(at + kLongestKey, m_text.size());
            for (end += quote; end < last && quoteAt(end) == 0 && m_text[end] != '\n';)
                ++end;
            end += quoteAt(end);
        } else if (m_hasBareKeys) {
            while (isKeyCharacter(charAt(end)))
                ++end;
        }
        const std::size_t next = behindSpaces(end);
        return end > at && (next == m_text.size() || m_text[next] == ':');
    }

    [[nodiscard]] bool beginsItem(std::size_t at) const {
        const char first = charAt(at);
        if (quoteAt(at) > 0 || std::string_view("{[-0123456789").contains(first)) return true;
        const std::string_view rest = m_text.substr(std::min(at, m_text.size()));
        const std::array literals = {"true", "false", "null", "True", "False", "None"};
        return std::ranges::any_of(
            literals, [rest](std::string_view word) { return rest.starts_with(word); });
    }

    json bare() {
        const std::size_t end = std::min(m_text.find_first_of(",}]\n", m_at), m_text.size());
        std::string_view word = m_text.substr(m_at, end - m_at);
        for (const std::string_view comment : {" //", " #", " /*"})
            word = word.substr(0, word.find(comment));
        m_at = end;
        m_wasCut = m_wasCut || isAtEnd();
        return bareValue(trimmed(word));
    }

    std::string_view m_text;
    std::size_t m_at;
    int m_openObjects = 0;
    int m_openArrays = 0;
    bool m_hasBareKeys = false;
    bool m_wasCut = false;
    bool m_endedInText = false;
    bool m_hasFailed = false;
};

} // namespace

std::optional<json> LenientJson::next() {
    m_wasCut = m_endedInText = false;
    while (m_failures < kMostFailures) {
        m_begin = m_text.find_first_of("{[", m_at);
        if (m_begin == std::string_view::npos) break;
        ValueReader reader(m_text, m_begin);
        if (std::optional<json> value = reader.read()) {
            m_at = reader.end();
            m_wasCut = reader.wasCut();
            m_endedInText = reader.endedInText();
            return value;
        }
        ++m_failures;
        m_at = m_begin + 1;
    }
    m_at = m_text.size();
    return std::nullopt;
}

} // namespace vorq::gateway
