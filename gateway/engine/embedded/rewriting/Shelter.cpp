#include "engine/embedded/rewriting/Shelter.h"

#include "support/Utf8.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace vorq::gateway {
namespace {

constexpr char32_t kFirst = 0xE000;
constexpr std::size_t kMost = 0x1900;

bool isPrivate(char32_t c) {
    return c >= kFirst && c < kFirst + kMost;
}

bool hasPrivate(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); at += decodeAt(text, at).length)
        if (isPrivate(decodeAt(text, at).value)) return true;
    return false;
}

/// Finds the code in backticks of a text: it ends at a run of as many as it began with, in its
/// line.
class CodeSpans {
  public:
    explicit CodeSpans(std::string_view text) : m_text(text) {}

    /// The code that begins with the run of backticks at `at`; empty for none. The text is asked
    /// from its beginning to its end.
    [[nodiscard]] std::string_view at(std::size_t at) {
        if (at >= m_lineEnd) readLine(at);
        const std::size_t ticks = runEnd(at) - at;
        const auto last = m_last.find(ticks);
        if (last == m_last.end() || last->second <= at) return {};
        std::size_t next = at + ticks;
        while (true) {
            next = m_text.find('`', next);
            const std::size_t end = runEnd(next);
            if (end - next == ticks) return m_text.substr(at, end - at);
            next = end;
        }
    }

    [[nodiscard]] std::size_t runEnd(std::size_t at) const {
        return std::min(m_text.find_first_not_of('`', at), m_text.size());
    }

  private:
    void readLine(std::size_t from) {
        m_lineEnd = std::min(m_text.find('\n', from), m_text.size());
        const std::string_view line = m_text.substr(0, m_lineEnd);
        for (std::size_t at = from; at < m_lineEnd; at = line.find('`', at)) {
            const std::size_t end = runEnd(at);
            m_last[end - at] = at;
            at = end;
        }
    }

    std::string_view m_text;
    std::size_t m_lineEnd = 0;                           // of the lines that were read
    std::unordered_map<std::size_t, std::size_t> m_last; // run of a length, where it is
};

/// The part of a word between blanks that is an address or has an entity, without the marks of the
/// sentence around it; empty for none.
std::string_view addressIn(std::string_view word) {
    const std::size_t begin = std::min(word.find_first_not_of("([{<\"'"), word.size());
    std::string_view core = word.substr(begin);
    const std::size_t end = core.find_last_not_of(".,;:!?)]}>\"'");
    core = core.substr(0, end == std::string_view::npos ? 0 : end + 1);
    const std::string_view behind = word.substr(begin + core.size());
    if (core.contains('&') && behind.starts_with(';')) core = word.substr(begin, core.size() + 1);
    static constexpr auto signs = std::to_array<std::string_view>({"://", "@", "www.", "&"});
    const auto isIn = [core](std::string_view sign) { return core.contains(sign); };
    return core.size() > 1 && std::ranges::any_of(signs, isIn) ? core : std::string_view();
}

} // namespace

Shelter::Shelter(std::string_view text) {
    if (hasPrivate(text)) {
        m_text = text;
        return;
    }
    CodeSpans code(text);
    for (std::size_t at = 0; at < text.size();) {
        std::string_view part;
        std::size_t begin = at;
        std::size_t end = 0;
        if (text[at] == '`') {
            part = code.at(at);
            end = part.empty() ? code.runEnd(at) : at + part.size();
        } else {
            // A word, and the blanks before it.
            begin = std::min(text.find_first_not_of(" \t\n", at), text.size());
            end = std::min(text.find_first_of(" \t\n`", begin), text.size());
            part = addressIn(text.substr(begin, end - begin));
            if (!part.empty()) begin = static_cast<std::size_t>(part.data() - text.data());
        }
        add(text.substr(at, end - at), part, begin - at);
        at = end;
    }
}

void Shelter::add(std::string_view stretch, std::string_view part, std::size_t begin) {
    if (part.empty() || m_parts.size() == kMost) {
        m_text += stretch;
        return;
    }
    m_text += stretch.substr(0, begin);
    appendUtf8(m_text, kFirst + static_cast<char32_t>(m_parts.size()));
    m_parts.emplace_back(part);
    m_text += stretch.substr(begin + part.size());
}

std::string Shelter::restored(std::string_view changed) const {
    if (m_parts.empty()) return std::string(changed);
    std::string result;
    for (std::size_t at = 0; at < changed.size();) {
        const CodePoint c = decodeAt(changed, at);
        if (isPrivate(c.value) && c.value - kFirst < m_parts.size())
            result += m_parts[c.value - kFirst];
        else
            result += changed.substr(at, c.length);
        at += c.length;
    }
    return result;
}

} // namespace vorq::gateway
