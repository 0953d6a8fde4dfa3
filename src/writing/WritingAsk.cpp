#include "writing/WritingAsk.h"

#include "support/text/Characters.h"
#include "support/text/Text.h"

#include <QList>

#include <algorithm>
#include <array>
#include <span>
#include <vector>

namespace vorq {
namespace {

using Phrases = std::span<const QStringView>;

constexpr auto sendPhrases = std::to_array<QStringView>({
    u"send to vorq",
    u"send it to vorq",
    u"send this to vorq",
    u"send that to vorq",
    u"send selection to vorq",
    u"send the selection to vorq",
    u"send highlight to vorq",
    u"send the highlight to vorq",
    u"open in vorq",
    u"open with vorq",
    u"open vorq",
    u"ask vorq",
    u"ask vorq about this",
    u"ask vorq about it",
    u"give this to vorq",
    u"give it to vorq",
    u"pass to vorq",
    u"pass it to vorq",
    u"bridge to vorq",
    u"vorq panel",
    u"open panel",
});

constexpr auto sendVerbs = std::to_array<QStringView>({
    u"send",
    u"open",
    u"ask",
    u"give",
    u"pass",
    u"bring",
    u"show",
});

constexpr auto applyPhrases = std::to_array<QStringView>({
    u"replace",
    u"replace it",
    u"replace that",
    u"replace this",
    u"replace the text",
    u"replace selection",
    u"replace the selection",
    u"apply",
    u"apply it",
    u"apply that",
    u"apply this",
    u"use it",
    u"use that",
    u"use this",
    u"use that one",
    u"do it",
    u"go ahead",
    u"yes",
    u"yeah",
    u"yep",
    u"ok",
    u"okay",
    u"put it in",
    u"put that in",
    u"insert it",
    u"insert that",
    u"paste it",
    u"paste that",
});

constexpr auto applyVerbs = std::to_array<QStringView>({
    u"replace",
    u"apply",
    u"insert",
    u"paste",
    u"use",
});

constexpr auto applyObjects = std::to_array<QStringView>({
    u"it",
    u"that",
    u"this",
    u"them",
    u"now",
    u"please",
    u"the",
    u"text",
    u"selection",
    u"highlight",
    u"one",
    u"already",
    u"ok",
    u"okay",
    u"yes",
});

constexpr auto takePhrases = std::to_array<QStringView>({
    u"redo",
    u"redo it",
    u"redo that",
    u"redo this",
    u"again",
    u"try again",
    u"do it again",
    u"rewrite",
    u"rewrite it",
    u"rewrite that",
    u"rewrite this",
    u"rephrase",
    u"rephrase it",
    u"rephrase that",
    u"rephrase this",
    u"regenerate",
    u"reroll",
    u"retry",
    u"next",
    u"next one",
    u"one more",
    u"one more time",
    u"another",
    u"another one",
    u"another version",
    u"another take",
    u"another option",
    u"something else",
    u"no",
    u"nope",
    u"not that",
    u"not this one",
    u"i dont like it",
    u"i don't like it",
    u"i dont like that",
    u"i don't like that",
});

constexpr auto takeWords = std::to_array<QStringView>({u"redo", u"regenerate", u"again"});

// "another … version": one of each, in this order.
constexpr auto takeKinds = std::to_array<QStringView>({
    u"another",
    u"different",
    u"new",
    u"other",
    u"better",
    u"fresh",
    u"second",
});
constexpr auto takeObjects = std::to_array<QStringView>({
    u"version",
    u"one",
    u"take",
    u"option",
    u"attempt",
    u"draft",
    u"wording",
    u"sentence",
    u"try",
    u"pass",
});

constexpr std::size_t mostWordsOfTake = 6;

bool isOneOf(QStringView text, Phrases phrases) {
    return std::ranges::find(phrases, text) != phrases.end();
}

bool containsAnyOf(QStringView text, Phrases phrases) {
    return std::ranges::any_of(
        phrases, [text](QStringView phrase) { return containsCharacters(text, phrase); });
}

constexpr bool isEndMark(char32_t codePoint) {
    return codePoint == U'.' || codePoint == U'!' || codePoint == U'?';
}

std::vector<QStringView> blankSeparated(QStringView text) {
    std::vector<QStringView> words;
    for (const QStringView word : text.split(u' ', Qt::SkipEmptyParts))
        words.push_back(word);
    return words;
}

// What has no word boundary inside.
bool belongsToWord(char32_t codePoint) {
    if (codePoint == U'\u200C' || codePoint == U'\u200D') return true;
    switch (QChar::category(codePoint)) {
    case QChar::Number_DecimalDigit:
    case QChar::Number_Letter:
    case QChar::Punctuation_Connector:
        return true;
    default:
        return QChar::isLetter(codePoint) || QChar::isMark(codePoint);
    }
}

// Whatever stands between word boundaries and is a word.
std::vector<QStringView> boundedWords(QStringView text) {
    std::vector<QStringView> words;
    qsizetype begin = -1;
    for (qsizetype at = 0; at < text.size();) {
        const bool isPair =
            text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        const char32_t codePoint =
            isPair ? QChar::surrogateToUcs4(text[at], text[at + 1]) : char32_t{text[at].unicode()};
        const bool isInside = belongsToWord(codePoint);
        if (isInside && begin < 0) begin = at;
        if (!isInside && begin >= 0) {
            words.push_back(text.sliced(begin, at - begin));
            begin = -1;
        }
        at += isPair ? 2 : 1;
    }
    if (begin >= 0) words.push_back(text.sliced(begin));
    return words;
}

bool namesAnotherTake(QStringView text) {
    const std::vector<QStringView> words = boundedWords(text);
    const auto kind =
        std::ranges::find_if(words, [](QStringView word) { return isOneOf(word, takeKinds); });
    return std::any_of(kind, words.end(),
                       [](QStringView word) { return isOneOf(word, takeObjects); });
}

} // namespace

QString normalizedAsk(QStringView text) {
    const QString single = withSingleBlanks(trimmed(text.toString().toLower()));
    return trimmedOf<isEndMark>(single).toString();
}

bool isSendToVorqPrompt(QStringView text) {
    const QString ask = normalizedAsk(text);
    if (isOneOf(ask, sendPhrases)) return true;
    return containsCharacters(ask, u"vorq") && containsAnyOf(ask, sendVerbs);
}

bool isApplyOnlyPrompt(QStringView text) {
    const QString ask = normalizedAsk(text);
    if (isOneOf(ask, applyPhrases)) return true;
    const std::vector<QStringView> words = blankSeparated(ask);
    if (words.empty() || !isOneOf(words.front(), applyVerbs)) return false;
    return std::all_of(words.begin() + 1, words.end(),
                       [](QStringView word) { return isOneOf(word, applyObjects); });
}

bool isAnotherTakePrompt(QStringView text) {
    const QString ask = normalizedAsk(text);
    if (isOneOf(ask, takePhrases)) return true;
    if (blankSeparated(ask).size() > mostWordsOfTake) return false;
    return containsAnyOf(ask, takeWords) || namesAnotherTake(ask);
}

} // namespace vorq
