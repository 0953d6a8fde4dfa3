#include "support/JsonWriter.h"

#include <QtGlobal>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace vorq {
namespace {

constexpr std::ptrdiff_t blockSize = 16;

bool isPlain(char16_t c, bool escapesSlash) {
    return c >= 0x20 && c < 0x80 && c != u'"' && c != u'\\' && (c != u'/' || !escapesSlash);
}

// The first of the text's characters as UTF-8, escaped where JSON asks for it.
class Escaping {
  public:
    Escaping(QStringView text, char* to, bool escapesSlash)
        : m_at(text.utf16()), m_end(m_at + text.size()), m_to(to), m_escapesSlash(escapesSlash) {}

    // The end of what was written, of which there are at most six bytes for a code unit.
    char* run() {
        while (m_at != m_end) {
            while (m_end - m_at >= blockSize && copyPlainBlock()) {
                m_at += blockSize;
                m_to += blockSize;
            }
            while (m_at != m_end && isPlain(*m_at, m_escapesSlash))
                *m_to++ = static_cast<char>(*m_at++);
            while (m_at != m_end && !isPlain(*m_at, m_escapesSlash)) {
                if (*m_at < 0x80)
                    copyEscaped(static_cast<char>(*m_at++));
                else
                    copyCharacter();
            }
        }
        return m_to;
    }

  private:
    // Copies a block that asks for no escape; without branches, so that it is done at once.
    bool copyPlainBlock() {
        const auto slash = static_cast<std::uint16_t>(m_escapesSlash ? u'/' : u'"');
        std::uint16_t special = 0;
        for (std::ptrdiff_t index = 0; index < blockSize; ++index) {
            const std::uint16_t c = m_at[index];
            const bool isSpecial =
                (c < 0x20) | (c > 0x7F) | (c == u'"') | (c == u'\\') | (c == slash);
            special |= static_cast<std::uint16_t>(isSpecial ? 0xFFFF : 0);
            m_to[index] = static_cast<char>(c);
        }
        return special == 0;
    }

    void copyEscaped(char c) {
        static constexpr std::string_view named = "\"\\/\b\f\n\r\t";
        static constexpr char names[] = "\"\\/bfnrt";
        static constexpr char hex[] = "0123456789abcdef";
        *m_to++ = '\\';
        const std::size_t found = named.find(c);
        if (found != std::string_view::npos) {
            *m_to++ = names[found];
            return;
        }
        for (const char digit : {'u', '0', '0', hex[c >> 4], hex[c & 0xF]})
            *m_to++ = digit;
    }

    void copyCharacter() {
        const char16_t unit = *m_at++;
        if (unit < 0x800) return copyBytes(unit, 1);
        if (!QChar::isSurrogate(unit)) return copyBytes(unit, 2);
        if (QChar::isLowSurrogate(unit) || m_at == m_end || !QChar::isLowSurrogate(*m_at)) {
            *m_to++ = '?';
            return;
        }
        copyBytes(QChar::surrogateToUcs4(unit, *m_at++), 3);
    }

    void copyBytes(char32_t code, int following) {
        const unsigned lead = 0xFF00U >> (following + 1); // a high bit for each byte
        *m_to++ = static_cast<char>((lead & 0xFFU) | (code >> (6 * following)));
        while (following-- > 0)
            *m_to++ = static_cast<char>(0x80U | ((code >> (6 * following)) & 0x3FU));
    }

    const char16_t* m_at;
    const char16_t* m_end;
    char* m_to;
    bool m_escapesSlash;
};

} // namespace

void JsonWriter::beginObject() {
    open('{');
}
void JsonWriter::endObject() {
    close('}');
}
void JsonWriter::beginArray() {
    open('[');
}
void JsonWriter::endArray() {
    close(']');
}

void JsonWriter::open(char bracket) {
    beforeValue();
    m_bytes += bracket;
    m_hasEntries.push_back(false);
}

void JsonWriter::close(char bracket) {
    Q_ASSERT(!m_hasEntries.empty() && !m_afterKey);
    const bool hadEntries = m_hasEntries.back();
    m_hasEntries.pop_back();
    if (!hadEntries && m_style == Style::Indented) m_bytes += '\n';
    lineBreak();
    m_bytes += bracket;
}

void JsonWriter::lineBreak() {
    if (m_style == Style::Compact) return;
    const auto indentation = static_cast<qsizetype>(m_hasEntries.size()) * 2;
    makeRoom(indentation + 1);
    m_bytes += '\n';
    m_bytes.append(indentation, ' ');
}

void JsonWriter::beforeValue() {
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (m_hasEntries.empty()) return;
    if (m_hasEntries.back()) m_bytes += ',';
    m_hasEntries.back() = true;
    lineBreak();
}

void JsonWriter::key(QStringView name) {
    Q_ASSERT(!m_hasEntries.empty() && !m_afterKey);
    beforeValue();
    string(name);
    m_bytes += m_style == Style::Compact ? ":" : " : ";
    m_afterKey = true;
}

void JsonWriter::plainKey(QByteArrayView name) {
    Q_ASSERT(!m_hasEntries.empty() && !m_afterKey);
    beforeValue();
    m_bytes += '"';
    m_bytes.append(name);
    m_bytes.append(m_style == Style::Compact ? QByteArrayView("\":") : QByteArrayView("\" : "));
    m_afterKey = true;
}

void JsonWriter::value(QStringView text) {
    beforeValue();
    string(text);
}

void JsonWriter::value(bool truth) {
    beforeValue();
    m_bytes += truth ? "true" : "false";
}

void JsonWriter::value(qint64 number) {
    beforeValue();
    m_bytes += QByteArray::number(number);
}

void JsonWriter::value(double number) {
    if (!std::isfinite(number)) return null();
    beforeValue();
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
    m_bytes.append(buffer, end - buffer);
}

void JsonWriter::null() {
    beforeValue();
    m_bytes += "null";
}

void JsonWriter::plainString(QByteArrayView text) {
    beforeValue();
    makeRoom(text.size() + 2);
    m_bytes += '"';
    m_bytes.append(text);
    m_bytes += '"';
}

void JsonWriter::raw(QByteArrayView json) {
    beforeValue();
    m_bytes.append(json);
}

// Each part of a text is written into room that is enough for the worst of it.
void JsonWriter::string(QStringView text) {
    constexpr qsizetype longestPart = 4096;
    constexpr qsizetype longestForm = 6; // "\u0001"
    m_bytes += '"';
    while (!text.isEmpty()) {
        qsizetype length = std::min(text.size(), longestPart);
        if (length < text.size() && text[length - 1].isHighSurrogate()) ++length;
        makeRoom(length * longestForm);
        const qsizetype before = m_bytes.size();
        m_bytes.resize(before + length * longestForm);
        char* begin = m_bytes.data() + before;
        Escaping escaping(text.first(length), begin, m_style == Style::Indented);
        m_bytes.truncate(before + (escaping.run() - begin));
        text = text.sliced(length);
    }
    m_bytes += '"';
}

void JsonWriter::makeRoom(qsizetype size) {
    const qsizetype needed = m_bytes.size() + size;
    if (needed > m_bytes.capacity()) m_bytes.reserve(std::max(needed, 2 * m_bytes.capacity()));
}

} // namespace vorq
