#include "platform/portable/DamagedSettings.h"

#include <QByteArrayList>

#include <cstddef>
#include <optional>
#include <simdjson.h>

namespace vorq {
namespace {

// Reads pieces of JSON, and passes over the rest.
class PieceReader {
  public:
    explicit PieceReader(const QByteArray& text) : m_text(text) {}

    [[nodiscard]] bool isAtEnd() const { return m_at >= m_text.size(); }
    void advance() { ++m_at; }
    void skipBlanks() {
        while (!isAtEnd() && QByteArrayView(" \t\r\n").contains(m_text[m_at]))
            advance();
    }
    bool skip(char mark) {
        if (isAtEnd() || m_text[m_at] != mark) return false;
        advance();
        return true;
    }

    // With its quotation marks. No text of ours goes over the end of a line.
    std::optional<QByteArray> readText() {
        const qsizetype start = m_at;
        if (!skip('"')) return std::nullopt;
        for (; !isAtEnd() && m_text[m_at] != '\n'; advance()) {
            if (m_text[m_at] == '\\')
                advance();
            else if (skip('"'))
                return m_text.sliced(start, m_at - start);
        }
        m_at = start;
        return std::nullopt;
    }

    // As far as its marks go: what is in it may be damaged.
    std::optional<QByteArray> readValue() {
        const qsizetype start = m_at;
        if (auto text = readText()) return text;
        int depth = 0;
        while (!isAtEnd()) {
            const char mark = m_text[m_at];
            if (depth == 0 && QByteArrayView(",}] \t\r\n").contains(mark)) break;
            if (readText()) continue;
            if (mark == '[' || mark == '{') ++depth;
            if (mark == ']' || mark == '}') --depth;
            advance();
            if (depth == 0 && (mark == ']' || mark == '}')) break;
        }
        if (depth == 0 && m_at > start) return m_text.sliced(start, m_at - start);
        m_at = start;
        return std::nullopt;
    }

    [[nodiscard]] qsizetype place() const { return m_at; }
    void goBackTo(qsizetype place) { m_at = place; }

  private:
    QByteArray m_text;
    qsizetype m_at = 0;
};

class MemberSearch {
  public:
    explicit MemberSearch(const QByteArray& damaged) : m_reader(damaged) {}

    // The next that is whole, such as «"key":1»; nothing at the end.
    std::optional<QByteArray> next() {
        while (!m_reader.isAtEnd()) {
            const std::optional<QByteArray> key = m_reader.readText();
            if (!key) {
                m_reader.advance();
                continue;
            }
            m_reader.skipBlanks();
            if (!m_reader.skip(':')) continue;
            m_reader.skipBlanks();
            const qsizetype start = m_reader.place();
            if (const auto value = m_reader.readValue(); value) {
                QByteArray member = *key + ':' + *value;
                if (isWhole(member)) return member;
            }
            m_reader.goBackTo(start); // another member may follow within
        }
        return std::nullopt;
    }

  private:
    bool isWhole(const QByteArray& member) {
        const QByteArray object = '{' + member + '}';
        simdjson::dom::object found;
        return m_parser.parse(object.constData(), static_cast<std::size_t>(object.size()))
                   .get(found) == simdjson::SUCCESS;
    }

    PieceReader m_reader;
    simdjson::dom::parser m_parser;
};

} // namespace

QByteArray readablePart(const QByteArray& damaged) {
    QByteArrayList members;
    for (MemberSearch search(damaged); const auto member = search.next();)
        members += *member;
    return '{' + members.join(',') + '}';
}

bool mayHaveHeld(const QByteArray& damaged, const QByteArray& key) {
    return !damaged.trimmed().endsWith('}') || damaged.contains(key);
}

} // namespace vorq
