#include "engine/embedded/rewriting/Shelter.h"

#include "support/Utf8.h"

#include <algorithm>
#include <array>

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

/// The code in backticks that the text begins with, in one line; empty for none.
std::string_view codeAtBeginning(std::string_view text) {
    const std::size_t ticks = std::min(text.find_first_not_of('`'), text.size());
    const std::size_t end = text.find(text.substr(0, ticks), ticks);
    const bool isCode = end != std::string_view::npos && !text.substr(0, end).contains('\n');
    return isCode ? text.substr(0, end + ticks) : std::string_view();
}

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
    while (!text.empty()) {
        std::string_view part;
        std::size_t begin = 0;
        std::size_t end = 0;
        if (text.front() == '`') {
            part = codeAtBeginning(text);
            end = part.empty() ? std::min(text.find_first_not_of('`'), text.size()) : part.size();
        } else {
            // A word, and the blanks before it.
            begin = std::min(text.find_first_not_of(" \t\n"), text.size());
            end = std::min(text.find_first_of(" \t\n`", begin), text.size());
            part = addressIn(text.substr(begin, end - begin));
            if (!part.empty()) begin = static_cast<std::size_t>(part.data() - text.data());
        }
        add(text.substr(0, end), part, begin);
        text.remove_prefix(end);
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
