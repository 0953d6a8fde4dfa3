#include "library/rtf/RtfLexer.h"

#include <algorithm>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr qsizetype longestWord = 40; // real ones are shorter; a longer run of letters is no word

constexpr bool isLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

constexpr bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

constexpr bool endsText(char byte) {
    return byte == '\\' || byte == '{' || byte == '}' || byte == '\n' || byte == '\r' ||
           byte == '\0';
}

std::optional<int> hexValueOf(char byte) {
    if (isDigit(byte)) return byte - '0';
    if (byte >= 'a' && byte <= 'f') return byte - 'a' + 10;
    if (byte >= 'A' && byte <= 'F') return byte - 'A' + 10;
    return std::nullopt;
}

} // namespace

RtfToken RtfLexer::next() {
    while (!m_rest.isEmpty()) {
        const char first = m_rest.front();
        switch (first) {
        case '{':
        case '}':
            m_rest = m_rest.sliced(1);
            return {.kind = first == '{' ? RtfToken::Kind::GroupStart : RtfToken::Kind::GroupEnd};
        case '\\':
            return takeControl();
        case '\n':
        case '\r':
        case '\0':
            m_rest = m_rest.sliced(1);
            break;
        default:
            return takeText();
        }
    }
    return {};
}

RtfToken RtfLexer::takeControl() {
    m_rest = m_rest.sliced(1);
    if (m_rest.isEmpty()) return {};
    if (isLetter(m_rest.front())) return takeWord();
    if (m_rest.front() == '\'') return takeHex();
    const auto byte = static_cast<std::uint8_t>(m_rest.front());
    m_rest = m_rest.sliced(1);
    return {.kind = RtfToken::Kind::Symbol, .byte = byte};
}

RtfToken RtfLexer::takeWord() {
    const auto* const end = std::find_if_not(
        m_rest.begin(), m_rest.begin() + std::min(m_rest.size(), longestWord), isLetter);
    RtfToken token{.kind = RtfToken::Kind::Word, .word = QLatin1StringView(m_rest.begin(), end)};
    m_rest = m_rest.sliced(end - m_rest.begin());
    takeNumber(token);
    if (m_rest.startsWith(' ')) m_rest = m_rest.sliced(1);
    if (token.word != "bin"_L1) return token;
    m_rest = m_rest.sliced(std::clamp<qsizetype>(token.number, 0, m_rest.size()));
    return {.kind = RtfToken::Kind::Binary};
}

void RtfLexer::takeNumber(RtfToken& token) {
    qsizetype at = m_rest.startsWith('-') ? 1 : 0;
    const bool isNegative = at == 1;
    if (at == m_rest.size() || !isDigit(m_rest[at])) return;
    constexpr qint64 largest = std::numeric_limits<int>::max();
    qint64 number = 0;
    for (; at < m_rest.size() && isDigit(m_rest[at]); ++at)
        number = std::min(number * 10 + (m_rest[at] - '0'), largest);
    token.number = static_cast<int>(isNegative ? -number : number);
    token.hasNumber = true;
    m_rest = m_rest.sliced(at);
}

RtfToken RtfLexer::takeHex() {
    m_rest = m_rest.sliced(1);
    const auto high = m_rest.size() > 1 ? hexValueOf(m_rest[0]) : std::nullopt;
    const auto low = m_rest.size() > 1 ? hexValueOf(m_rest[1]) : std::nullopt;
    if (!high || !low) return {.kind = RtfToken::Kind::Broken};
    m_rest = m_rest.sliced(2);
    return {.kind = RtfToken::Kind::Hex, .byte = static_cast<std::uint8_t>(*high * 16 + *low)};
}

RtfToken RtfLexer::takeText() {
    const auto* const end = std::find_if(m_rest.begin(), m_rest.end(), endsText);
    const QByteArrayView text = m_rest.first(end - m_rest.begin());
    m_rest = m_rest.sliced(text.size());
    return {.kind = RtfToken::Kind::Text, .text = text};
}

} // namespace vorq
