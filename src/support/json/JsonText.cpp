#include "support/json/JsonText.h"

#include "support/json/PlainRun.h"

#include <array>
#include <optional>

namespace vorq {
namespace {

bool isPlain(char c) {
    return c != '\\' && static_cast<unsigned char>(c) < 0x80;
}

// What the names of escapes stand for; nothing for all others but "u".
constexpr std::array<char, 256> escapes = [] {
    std::array<char, 256> values{};
    constexpr std::string_view names = "\"\\/bfnrt";
    constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
    for (std::size_t index = 0; index < names.size(); ++index)
        values[static_cast<unsigned char>(names[index])] = meanings[index];
    return values;
}();

class Unescaping {
  public:
    Unescaping(std::string_view body, char16_t* to)
        : m_at(body.data()), m_end(m_at + body.size()), m_to(to) {}

    // The end of what was written; nothing if the body is not in order.
    char16_t* run() {
        while (m_at != m_end) {
            copyPlain();
            while (m_at != m_end && !isPlain(*m_at)) {
                if (*m_at != '\\')
                    copyCharacter();
                else if (!copyEscape())
                    return nullptr;
            }
        }
        return m_to;
    }

  private:
    // In variables of its own, which no write through m_to can touch.
    void copyPlain() {
        const char* at = m_at;
        char16_t* to = m_to;
        copyPlainBlocks(at, m_end, to, widenBlock);
        while (at != m_end && isPlain(*at))
            *to++ = static_cast<unsigned char>(*at++);
        m_at = at;
        m_to = to;
    }

    // A character of two to four bytes.
    void copyCharacter() {
        const unsigned lead = static_cast<unsigned char>(*m_at++);
        const int following = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        unsigned code = lead & (0x3FU >> following);
        for (int index = 0; index < following; ++index)
            code = code << 6 | (static_cast<unsigned char>(*m_at++) & 0x3FU);
        if (code < 0x10000) {
            *m_to++ = static_cast<char16_t>(code);
        } else {
            *m_to++ = QChar::highSurrogate(code);
            *m_to++ = QChar::lowSurrogate(code);
        }
    }

    bool copyEscape() {
        if (m_end - m_at < 2) return false;
        const char name = m_at[1];
        m_at += 2;
        if (name == 'u') return copyCodeUnits();
        const char meant = escapes[static_cast<unsigned char>(name)];
        *m_to++ = static_cast<unsigned char>(meant);
        return meant != '\0';
    }

    bool copyCodeUnits() {
        const std::optional<char16_t> unit = hexUnit();
        if (!unit || QChar::isLowSurrogate(*unit)) return false;
        *m_to++ = *unit;
        if (!QChar::isHighSurrogate(*unit)) return true;
        if (m_end - m_at < 2 || m_at[0] != '\\' || m_at[1] != 'u') return false;
        m_at += 2;
        const std::optional<char16_t> second = hexUnit();
        if (!second || !QChar::isLowSurrogate(*second)) return false;
        *m_to++ = *second;
        return true;
    }

    std::optional<char16_t> hexUnit() {
        if (m_end - m_at < 4) return std::nullopt;
        unsigned unit = 0;
        for (int index = 0; index < 4; ++index) {
            const char c = *m_at++;
            const char lower = static_cast<char>(c | 0x20);
            if (c >= '0' && c <= '9')
                unit = unit * 16 + static_cast<unsigned>(c - '0');
            else if (lower >= 'a' && lower <= 'f')
                unit = unit * 16 + static_cast<unsigned>(lower - 'a' + 10);
            else
                return std::nullopt;
        }
        return static_cast<char16_t>(unit);
    }

    const char* m_at;
    const char* m_end;
    char16_t* m_to;
};

} // namespace

bool unescapeJson(std::string_view body, QString& text) {
    // No byte becomes more than one code unit.
    QString result(static_cast<qsizetype>(body.size()), Qt::Uninitialized);
    auto* begin = reinterpret_cast<char16_t*>(result.data());
    const char16_t* end = Unescaping(body, begin).run();
    if (end == nullptr) return false;
    const qsizetype size = end - begin;
    const bool isWasteful = size < result.size() - result.size() / 4;
    result.truncate(size);
    if (isWasteful) result.squeeze();
    text = std::move(result);
    return true;
}

} // namespace vorq
