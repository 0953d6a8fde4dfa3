#include "writing/words/WordAltsChoice.h"

#include "support/text/Text.h"
#include "writing/words/SelectionWords.h"

#include <QSet>
#include <QStringList>

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr qsizetype shortestContentWord = 4;
constexpr qsizetype wordsApart = 4;

bool isPunctuation(char32_t codePoint) {
    return QChar::isPunct(codePoint) || QChar::isSymbol(codePoint) ||
           isWhitespaceOrNewline(codePoint);
}

bool isFunctionWord(QStringView word) {
    static const QSet<QString> words{
        u"about"_s,  u"after"_s,  u"also"_s,  u"because"_s, u"been"_s,  u"before"_s, u"being"_s,
        u"could"_s,  u"does"_s,   u"each"_s,  u"from"_s,    u"have"_s,  u"into"_s,   u"just"_s,
        u"like"_s,   u"more"_s,   u"most"_s,  u"must"_s,    u"only"_s,  u"other"_s,  u"over"_s,
        u"shall"_s,  u"should"_s, u"some"_s,  u"such"_s,    u"than"_s,  u"that"_s,   u"their"_s,
        u"them"_s,   u"then"_s,   u"there"_s, u"these"_s,   u"they"_s,  u"this"_s,   u"those"_s,
        u"though"_s, u"under"_s,  u"until"_s, u"very"_s,    u"were"_s,  u"what"_s,   u"when"_s,
        u"where"_s,  u"which"_s,  u"while"_s, u"will"_s,    u"with"_s,  u"would"_s,  u"your"_s,
        u"aber"_s,   u"auch"_s,   u"dass"_s,  u"dem"_s,     u"durch"_s, u"eine"_s,   u"einem"_s,
        u"einen"_s,  u"einer"_s,  u"nicht"_s, u"noch"_s,    u"oder"_s,  u"sich"_s,   u"sind"_s,
        u"wird"_s,   u"dans"_s,   u"pour"_s,  u"avec"_s,    u"para"_s,  u"como"_s,   u"sobre"_s};
    return word.size() < shortestContentWord || words.contains(word.toString().toLower());
}

bool isUpper(QStringView word) {
    return word.toString().toUpper() == word && word.toString().toLower() != word;
}

bool isLower(QStringView word) {
    return word.toString().toLower() == word;
}

QString capitalized(QStringView word) {
    const qsizetype first = word.front().isHighSurrogate() && word.size() > 1 ? 2 : 1;
    return word.first(first).toString().toUpper() + word.sliced(first).toString();
}

QString withCapitalsOf(QStringView word, QStringView alternative) {
    if (word.size() > 1 && isUpper(word)) return alternative.toString().toUpper();
    if (word.front().isUpper()) return capitalized(alternative);
    const bool isCapitalized =
        alternative.front().isUpper() && alternative.size() > 1 && isLower(alternative.sliced(1));
    return isLower(word) && isCapitalized ? alternative.toString().toLower()
                                          : alternative.toString();
}

QStringView possessiveOf(QStringView word) {
    for (const QStringView ending : {QStringView(u"'s"), QStringView(u"’s")})
        if (word.size() > ending.size() && word.endsWith(ending)) return word.last(ending.size());
    return {};
}

// Whether "a" or "an", where one stands before it, would no longer do.
bool clashesWithArticle(QStringView article, QStringView alternative) {
    const QChar first = alternative.front().toLower();
    const bool isVowel = QStringView(u"aeiou").contains(first);
    if (article.compare(u"a", Qt::CaseInsensitive) == 0) return isVowel;
    if (article.compare(u"an", Qt::CaseInsensitive) == 0) return !isVowel || first == u'u';
    return false;
}

struct Candidate {
    WritingWordAlt alt;
    qsizetype word = 0; // how many are before it
    bool isContent = false;
};

class Choosing final {
  public:
    explicit Choosing(const QString& selection) : m_words(selection) {}

    void consider(const OfferedWordAlt& offered) {
        const QStringView word = trimmedOf<isPunctuation>(offered.word);
        const auto place = placeOf(offered, word);
        if (!place) return;
        const QStringView original = sliceOf(m_words.text(), *place);
        const QString alternative = fittedAlternative(offered.alternative, original);
        if (alternative.isEmpty()) return;
        if (clashesWithArticle(m_words.wordBefore(place->location), alternative)) return;
        m_taken.push_back(*place);
        m_candidates.push_back({.alt = {.original = original.toString(),
                                        .alternative = alternative,
                                        .utf16Range = place,
                                        .wordFrame = {}},
                                .word = m_words.indexAt(place->location),
                                .isContent = !isFunctionWord(original)});
    }

    QList<WritingWordAlt> best(qsizetype most) {
        std::vector<const Candidate*> chosen;
        for (const bool isContent : {true, false})
            for (const qsizetype apart : {wordsApart, qsizetype{1}})
                for (const Candidate& candidate : m_candidates)
                    if (std::ssize(chosen) < most && candidate.isContent == isContent &&
                        standsApart(candidate, chosen, apart))
                        chosen.push_back(&candidate);
        std::ranges::sort(chosen, {}, [](const Candidate* one) { return one->word; });
        QList<WritingWordAlt> alts;
        for (const Candidate* candidate : chosen)
            alts.push_back(candidate->alt);
        return alts;
    }

  private:
    static bool standsApart(const Candidate& candidate, const std::vector<const Candidate*>& chosen,
                            qsizetype apart) {
        return std::ranges::all_of(chosen, [&](const Candidate* other) {
            return std::abs(other->word - candidate.word) >= apart;
        });
    }

    [[nodiscard]] bool isTaken(TextRange range) const {
        return std::ranges::any_of(m_taken, [&](TextRange taken) {
            return range.location < taken.location + taken.length &&
                   taken.location < range.location + range.length;
        });
    }

    // The one that is named, by its number or by what is around it, else the first that is free.
    [[nodiscard]] std::optional<TextRange> placeOf(const OfferedWordAlt& offered,
                                                   QStringView word) const {
        const std::vector<TextRange> places = m_words.occurrencesOf(word);
        if (offered.occurrence >= 1 && offered.occurrence <= std::ssize(places)) {
            const TextRange named = places[static_cast<std::size_t>(offered.occurrence) - 1];
            if (!isTaken(named)) return named;
            return std::nullopt;
        }
        if (const QStringView around = trimmed(offered.context); !around.isEmpty()) {
            const qsizetype begin = m_words.text().indexOf(around, 0, Qt::CaseInsensitive);
            const auto named = within(places, begin, around);
            if (named && !isTaken(*named)) return named;
        }
        const auto free =
            std::ranges::find_if(places, [this](TextRange place) { return !isTaken(place); });
        return free == places.end() ? std::nullopt : std::optional(*free);
    }

    static std::optional<TextRange> within(const std::vector<TextRange>& places, qsizetype begin,
                                           QStringView around) {
        if (begin < 0) return std::nullopt;
        const auto found = std::ranges::find_if(places, [&](TextRange place) {
            return place.location >= begin &&
                   place.location + place.length <= begin + around.size();
        });
        return found == places.end() ? std::nullopt : std::optional(*found);
    }

    SelectionWords m_words;
    std::vector<TextRange> m_taken;
    std::vector<Candidate> m_candidates;
};

} // namespace

qsizetype wordAltsFor(const QString& selection) {
    return std::min(SelectionWords(selection).count() / wordsPerAlt, mostWordAlts);
}

QString fittedAlternative(QStringView alternative, QStringView word) {
    const QStringView core = trimmedOf<isPunctuation>(alternative);
    if (core.isEmpty() || word.isEmpty() || core.size() > longestAlternative) return {};
    const auto isForeign = [](QChar unit) {
        return isWhitespaceOrNewline(unit.unicode()) || !unit.isPrint() || unit == u'<' ||
               unit == u'/' || unit == u'|';
    };
    if (std::ranges::any_of(core, isForeign)) return {};
    if (std::ranges::none_of(core, [](QChar unit) { return unit.isLetter(); })) return {};
    QString fitted = withCapitalsOf(word, core);
    const QStringView possessive = possessiveOf(word);
    if (!possessive.isEmpty() && possessiveOf(core).isEmpty()) fitted += possessive;
    return fitted.compare(word, Qt::CaseInsensitive) == 0 ? QString() : fitted;
}

QList<WritingWordAlt> chosenWordAlts(const std::vector<OfferedWordAlt>& offered,
                                     const QString& selection) {
    const qsizetype most = wordAltsFor(selection);
    if (most < 1) return {};
    Choosing choosing(selection);
    for (const OfferedWordAlt& one : offered)
        choosing.consider(one);
    return choosing.best(most);
}

} // namespace vorq
