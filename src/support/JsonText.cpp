#include "support/JsonText.h"

#include <cstdint>
#include <cstring>
#include <optional>

namespace vorq {
namespace {

constexpr std::ptrdiff_t blockSize = 16;

constexpr std::uint64_t everyByte(unsigned char value) {
    return 0x0101'0101'0101'0101U * value;
}

// The highest bit of bytes that are no ASCII or the byte asked for; others may follow those.
std::uint64_t marked(std::uint64_t bytes, unsigned char sought) {
    const std::uint64_t difference = bytes ^ everyByte(sought);
    return (bytes | ((difference - everyByte(1)) & ~difference)) & everyByte(0x80);
}

// Copies a block if it is ASCII without an escape.
bool copyPlainBlock(const char* from, char16_t* to) {
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    std::memcpy(&first, from, sizeof first);
    std::memcpy(&second, from + sizeof first, sizeof second);
    if ((marked(first, '\\') | marked(second, '\\')) != 0) return false;
    for (std::ptrdiff_t index = 0; index < blockSize; ++index)
        to[index] = static_cast<unsigned char>(from[index]);
    return true;
}

bool isPlain(char c) {
    return c != '\\' && static_cast<unsigned char>(c) < 0x80;
}

class Unescaping {
  public:
    Unescaping(std::string_view body, char16_t* to)
        : m_at(body.data()), m_end(m_at + body.size()), m_to(to) {}

    // The end of what was written; nothing if the body is not in order.
    char16_t* run() {
        while (m_at != m_end) {
            while (m_end - m_at >= blockSize && copyPlainBlock(m_at, m_to)) {
                m_at += blockSize;
                m_to += blockSize;
            }
            while (m_at != m_end && isPlain(*m_at))
                *m_to++ = static_cast<unsigned char>(*m_at++);
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
        static constexpr std::string_view names = "\"\\/bfnrt";
        static constexpr char values[] = "\"\\/\b\f\n\r\t";
        if (m_end - m_at < 2) return false;
        const char name = m_at[1];
        m_at += 2;
        if (name == 'u') return copyCodeUnits();
        const std::size_t found = names.find(name);
        if (found == std::string_view::npos) return false;
        *m_to++ = static_cast<unsigned char>(values[found]);
        return true;
    }

    bool copyCodeUnits() {
        const std::optional<char16_t> unit = hexUnit();
        if (!unit) return false;
        *m_to++ = QChar::isLowSurrogate(*unit) ? u'\uFFFD' : *unit;
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
