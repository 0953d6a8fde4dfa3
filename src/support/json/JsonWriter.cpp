#include "support/json/JsonWriter.h"

#include "support/json/PlainRun.h"
#include "support/text/CharacterBlocks.h"

#include <QtGlobal>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

namespace vorq {
namespace {

constexpr qsizetype pieceSize = qsizetype{256} << 10;

bool isPlain(char16_t c, char16_t slash) {
    return c >= 0x20 && c < 0x80 && c != u'"' && c != u'\\' && c != slash;
}

// The letters of the escapes that have one.
constexpr std::array<char, 0x80> escapeLetters = [] {
    std::array<char, 0x80> letters{};
    constexpr std::string_view meant = "\"\\/\b\f\n\r\t";
    constexpr std::string_view names = "\"\\/bfnrt";
    for (std::size_t index = 0; index < meant.size(); ++index)
        letters[static_cast<unsigned char>(meant[index])] = names[index];
    return letters;
}();

// Text as UTF-8, escaped where JSON asks for it.
class Escaping {
  public:
    Escaping(QStringView text, char* to, bool escapesSlash)
        : m_at(text.utf16()),
          m_end(m_at + text.size()),
          m_to(to),
          m_slash(escapesSlash ? u'/' : u'"') {}

    // The end of what was written, of which there are at most six bytes for a code unit.
    char* run() {
        while (m_at != m_end) {
            copyPlain();
            while (m_at != m_end && !isPlain(*m_at, m_slash)) {
                if (*m_at < 0x80)
                    copyEscaped(static_cast<unsigned char>(*m_at++));
                else
                    copyCharacters();
            }
        }
        return m_to;
    }

  private:
    // In variables of its own, which no write through m_to can touch.
    void copyPlain() {
        const char16_t* at = m_at;
        char* to = m_to;
        copyPlainBlocks(at, m_end, to, [slash = m_slash](const char16_t* from, char* place) {
            return narrowBlock(from, place, slash);
        });
        while (at != m_end && isPlain(*at, m_slash))
            *to++ = static_cast<char>(*at++);
        m_at = at;
        m_to = to;
    }

    void copyEscaped(unsigned char c) {
        static constexpr char hex[] = "0123456789abcdef";
        *m_to++ = '\\';
        if (escapeLetters[c] != '\0') {
            *m_to++ = escapeLetters[c];
            return;
        }
        for (const char digit : {'u', '0', '0', hex[c >> 4], hex[c & 0xF]})
            *m_to++ = digit;
    }

    // All that stand here and are no ASCII, and ASCII among them.
    void copyCharacters() {
        const char16_t* at = m_at;
        char* to = m_to;
        while (at != m_end && *at >= 0x80) {
            if (m_hasBlocks) copyCharacterBlocks(at, m_end, to, m_slash);
            if (at == m_end || *at < 0x80) break;
            const char16_t unit = *at++;
            if (unit < 0x800) {
                *to++ = static_cast<char>(0xC0 | unit >> 6);
            } else if (!QChar::isSurrogate(unit)) {
                *to++ = static_cast<char>(0xE0 | unit >> 12);
                *to++ = following(unit >> 6);
            } else if (QChar::isHighSurrogate(unit) && at != m_end && QChar::isLowSurrogate(*at)) {
                const char32_t code = QChar::surrogateToUcs4(unit, *at++);
                *to++ = static_cast<char>(0xF0 | code >> 18);
                *to++ = following(code >> 12);
                *to++ = following(code >> 6);
                *to++ = following(code);
                continue;
            } else {
                *to++ = '?';
                continue;
            }
            *to++ = following(unit);
        }
        m_at = at;
        m_to = to;
    }

    static char following(char32_t code) { return static_cast<char>(0x80U | (code & 0x3FU)); }

    const char16_t* m_at;
    const char16_t* m_end;
    char* m_to;
    char16_t m_slash; // one more that is escaped
    bool m_hasBlocks = hasCharacterBlocks();
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

// Room for so many bytes, of which all must be written.
char* JsonWriter::grow(qsizetype size) {
    makeRoom(size);
    char* place = m_bytes.data() + m_size;
    m_size += size;
    return place;
}

void JsonWriter::makeRoom(qsizetype size) {
    if (m_sink && m_size >= pieceSize)
        m_sink(QByteArrayView(m_bytes).first(std::exchange(m_size, 0)));
    if (m_size + size > m_bytes.size())
        m_bytes.resize(std::max<qsizetype>({256, m_size + size, 2 * m_bytes.size()}));
}

void JsonWriter::put(QByteArrayView bytes) {
    std::memcpy(grow(bytes.size()), bytes.data(), static_cast<std::size_t>(bytes.size()));
}

QByteArray JsonWriter::take() {
    if (m_sink) {
        m_sink(QByteArrayView(m_bytes).first(std::exchange(m_size, 0)));
        return {};
    }
    m_bytes.truncate(std::exchange(m_size, 0));
    return std::move(m_bytes);
}

void JsonWriter::open(char bracket) {
    beforeValue();
    *grow(1) = bracket;
    m_hasEntries.push_back(false);
}

void JsonWriter::close(char bracket) {
    Q_ASSERT(!m_hasEntries.empty() && !m_afterKey);
    const bool hadEntries = m_hasEntries.back();
    m_hasEntries.pop_back();
    if (!hadEntries && m_style == Style::Indented) *grow(1) = '\n';
    lineBreak();
    *grow(1) = bracket;
}

void JsonWriter::lineBreak() {
    if (m_style == Style::Compact) return;
    const std::size_t indentation = m_hasEntries.size() * 2;
    char* place = grow(static_cast<qsizetype>(indentation) + 1);
    *place = '\n';
    std::memset(place + 1, ' ', indentation);
}

void JsonWriter::beforeValue() {
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (m_hasEntries.empty()) return;
    if (m_hasEntries.back()) *grow(1) = ',';
    m_hasEntries.back() = true;
    lineBreak();
}

void JsonWriter::afterKey() {
    if (m_style == Style::Compact)
        put(":");
    else
        put(" : ");
    m_afterKey = true;
}

void JsonWriter::key(QStringView name) {
    Q_ASSERT(!m_hasEntries.empty() && !m_afterKey);
    beforeValue();
    string(name);
    afterKey();
}

void JsonWriter::plainKey(QByteArrayView name) {
    Q_ASSERT(!m_hasEntries.empty() && !m_afterKey);
    plainString(name);
    afterKey();
}

void JsonWriter::value(QStringView text) {
    beforeValue();
    string(text);
}

void JsonWriter::value(bool truth) {
    raw(truth ? QByteArrayView("true") : QByteArrayView("false"));
}

void JsonWriter::value(qint64 number) {
    char buffer[24];
    raw(QByteArrayView(buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr));
}

void JsonWriter::value(double number) {
    if (!std::isfinite(number)) return null();
    char buffer[32];
    raw(QByteArrayView(buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr));
}

void JsonWriter::null() {
    raw("null");
}

void JsonWriter::plainString(QByteArrayView text) {
    beforeValue();
    char* place = grow(text.size() + 2);
    place[0] = '"';
    std::memcpy(place + 1, text.data(), static_cast<std::size_t>(text.size()));
    place[text.size() + 1] = '"';
}

void JsonWriter::raw(QByteArrayView json) {
    beforeValue();
    put(json);
}

// Each part of a text is written into room that is enough for the worst of it.
void JsonWriter::string(QStringView text) {
    constexpr qsizetype longestPart = 4096;
    constexpr qsizetype longestForm = 6; // "\u0001"
    *grow(1) = '"';
    while (!text.isEmpty()) {
        qsizetype length = std::min(text.size(), longestPart);
        if (length < text.size() && text[length - 1].isHighSurrogate()) ++length;
        makeRoom(length * longestForm);
        char* begin = m_bytes.data() + m_size;
        Escaping escaping(text.first(length), begin, m_style == Style::Indented);
        m_size += escaping.run() - begin;
        text = text.sliced(length);
    }
    *grow(1) = '"';
}

} // namespace vorq
