#include "writing/words/WordAltsAnswer.h"

#include "support/text/Text.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr auto wordKeys = std::to_array<QStringView>(
    {u"word", u"original", u"from", u"old", u"source", u"text", u"target"});
constexpr auto alternativeKeys =
    std::to_array<QStringView>({u"alternative", u"alternatives", u"replacement", u"to", u"new",
                                u"suggestion", u"suggestions", u"synonym", u"synonyms"});
constexpr auto occurrenceKeys =
    std::to_array<QStringView>({u"occurrence", u"index", u"nth", u"instance", u"position"});
constexpr auto contextKeys =
    std::to_array<QStringView>({u"context", u"sentence", u"phrase", u"around", u"excerpt"});

// Those that are not likely to be words of a text themselves.
constexpr auto plainKeys = std::to_array<QStringView>(
    {u"word", u"original", u"alternative", u"replacement", u"suggestion", u"synonym"});

struct Token {
    enum class Kind { Open, Close, Colon, Comma, Text, Bare, End };
    Kind kind = Kind::End;
    QString text; // of a text or a bare word
    QChar bracket;
};

QChar unescaped(QChar letter) {
    switch (letter.unicode()) {
    case 'n':
        return u'\n';
    case 't':
        return u'\t';
    case 'r':
        return u'\r';
    default:
        return letter;
    }
}

// Cuts a text into what JSON is made of, and passes over what it is not.
class Tokens final {
  public:
    explicit Tokens(QStringView text) : m_text(text) {}

    Token next() {
        using enum Token::Kind;
        while (m_at < m_text.size()) {
            const QChar unit = m_text[m_at];
            if (unit == u'{' || unit == u'[') return take(Open);
            if (unit == u'}' || unit == u']') return take(Close);
            if (unit == u':') return take(Colon);
            if (unit == u',') return take(Comma);
            if (unit == u'"' || unit == u'“' || unit == u'\'') return {Text, quoted(unit), {}};
            if (unit.isLetterOrNumber() || unit == u'-') return {Bare, bare(), {}};
            ++m_at;
        }
        return {};
    }

  private:
    Token take(Token::Kind kind) { return {kind, {}, m_text[m_at++]}; }

    QString quoted(QChar opening) {
        const QChar closing = opening == u'“' ? QChar(u'”') : opening;
        QString text;
        for (++m_at; m_at < m_text.size() && m_text[m_at] != closing; ++m_at) {
            if (m_text[m_at] == u'\\' && m_at + 1 < m_text.size())
                appendEscaped(text);
            else
                text += m_text[m_at];
        }
        ++m_at;
        return text;
    }

    void appendEscaped(QString& text) {
        const QChar letter = m_text[++m_at];
        bool isNumber = false;
        const ushort code = letter == u'u' && m_at + 4 < m_text.size()
                                ? m_text.sliced(m_at + 1, 4).toUShort(&isNumber, 16)
                                : ushort{0};
        text += isNumber ? QChar(code) : unescaped(letter);
        if (isNumber) m_at += 4;
    }

    QString bare() {
        const qsizetype begin = m_at;
        while (m_at < m_text.size() && (m_text[m_at].isLetterOrNumber() || m_text[m_at] == u'_' ||
                                        m_text[m_at] == u'-' || m_text[m_at] == u'\''))
            ++m_at;
        return m_text.sliced(begin, m_at - begin).toString();
    }

    QStringView m_text;
    qsizetype m_at = 0;
};

// One object as it is read; of a list under a key the first value counts.
struct Record {
    QChar bracket;
    std::vector<std::pair<QString, QString>> members;
    QString key;
};

template<std::size_t Size>
QString memberOf(const Record& record, const std::array<QStringView, Size>& names) {
    for (const QStringView name : names)
        for (const auto& [key, value] : record.members)
            if (key.compare(name, Qt::CaseInsensitive) == 0) return value;
    return {};
}

class Reading final {
  public:
    explicit Reading(QStringView text) : m_tokens(text) {}

    std::vector<OfferedWordAlt> run() {
        for (Token token = m_tokens.next(); token.kind != Token::Kind::End && hasRoom();) {
            Token following = m_tokens.next();
            take(token, following.kind == Token::Kind::Colon);
            token = std::move(following);
        }
        while (!m_records.empty())
            close();
        return std::move(m_offered);
    }

  private:
    [[nodiscard]] bool hasRoom() const { return m_offered.size() < mostOfferedWordAlts; }

    void take(const Token& token, bool isKey) {
        using enum Token::Kind;
        if (token.kind == Open) {
            m_records.push_back({.bracket = token.bracket, .members = {}, .key = {}});
            // A list's values are those of the key that it stands under.
            if (token.bracket == u'[' && m_records.size() > 1)
                m_records.back().key = m_records[m_records.size() - 2].key;
        } else if (token.kind == Close && !m_records.empty()) {
            close();
        } else if (token.kind == Text || token.kind == Bare) {
            value(token.text, isKey);
        }
    }

    void value(const QString& text, bool isKey) {
        if (m_records.empty()) return;
        Record& record = m_records.back();
        if (isKey)
            record.key = text;
        else if (!record.key.isEmpty())
            holder(record).members.emplace_back(record.key, text);
    }

    // The object that a list belongs to, or what is read itself.
    Record& holder(Record& record) {
        if (record.bracket == u'{') return record;
        for (auto at = m_records.rbegin(); at != m_records.rend(); ++at)
            if (at->bracket == u'{') return *at;
        return record;
    }

    void close() {
        const Record record = std::move(m_records.back());
        m_records.pop_back();
        if (record.bracket != u'{') return;
        const QString word = memberOf(record, wordKeys);
        const QString alternative = memberOf(record, alternativeKeys);
        if (!word.isEmpty() && !alternative.isEmpty()) {
            m_offered.push_back({.word = word,
                                 .alternative = alternative,
                                 .occurrence = memberOf(record, occurrenceKeys).toInt(),
                                 .context = memberOf(record, contextKeys)});
            return;
        }
        // Words as keys.
        if (!memberOf(record, plainKeys).isEmpty()) return;
        for (const auto& [key, text] : record.members)
            if (hasRoom())
                m_offered.push_back(
                    {.word = key, .alternative = text, .occurrence = 0, .context = {}});
    }

    Tokens m_tokens;
    std::vector<Record> m_records;
    std::vector<OfferedWordAlt> m_offered;
};

// From its first bracket on: what is said before may have quotes in it.
QStringView withoutTalk(QStringView text) {
    const auto isBracket = [](QChar unit) { return unit == u'[' || unit == u'{'; };
    const auto first = std::ranges::find_if(text, isBracket);
    return text.sliced(first - text.begin());
}

} // namespace

std::vector<OfferedWordAlt> readWordAlts(QStringView answer) {
    if (answer.size() > longestWordAltsAnswer) return {};
    const QStringView json = withoutTalk(trimmed(answer));
    std::vector<OfferedWordAlt> offered = Reading(json).run();
    if (!offered.empty() || !json.contains(u"\\\"")) return offered;
    QString plainer = json.toString();
    plainer.replace(u"\\\""_s, u"\""_s);
    return Reading(plainer).run();
}

} // namespace vorq
