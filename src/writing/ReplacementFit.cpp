#include "writing/ReplacementFit.h"

#include "capture/copy/ReplacementText.h"
#include "support/text/Text.h"

#include <QList>

#include <algorithm>
#include <array>

namespace vorq {
namespace {

// Full stops of the scripts that have one.
constexpr bool isFullStop(char32_t codePoint) {
    return codePoint == U'.' || codePoint == U'。' || codePoint == U'．' || codePoint == U'।' ||
           codePoint == U'۔';
}

bool endsWithFullStop(QStringView text) {
    return !text.isEmpty() && isFullStop(text.back().unicode());
}

// Whether a sentence ends there, maybe in quotes or parentheses.
bool endsSentence(QStringView text) {
    constexpr QStringView closing = u"\"')]}”’“‘»›」』）】 \u00a0\u202f";
    constexpr QStringView marks = u"!?…！？؟";
    while (!text.isEmpty() && closing.contains(text.back()))
        text.chop(1);
    return endsWithFullStop(text) || (!text.isEmpty() && marks.contains(text.back()));
}

// As "e.g." or "z.B.", and not as an address or a number.
bool isOfSingleLetters(QStringView word) {
    const QStringView letters = word.chopped(1);
    if (!letters.contains(u'.')) return false;
    return std::ranges::all_of(letters.split(u'.'), [](QStringView piece) {
        return piece.size() == 1 && piece.front().isLetter();
    });
}

// Stops that belong to the word, or are an ellipsis, and end no sentence.
bool endsWithAbbreviation(QStringView text) {
    static constexpr auto abbreviations =
        std::to_array<QStringView>({u"etc.", u"al.", u"Inc.", u"Ltd.", u"Co.", u"Corp.", u"Jr.",
                                    u"Sr.", u"usw.", u"ff.", u"Ph.D."});
    qsizetype begin = text.size();
    while (begin > 0 && !isWhitespaceOrNewline(text[begin - 1].unicode()))
        --begin;
    const QStringView word = text.sliced(begin);
    return word.endsWith(u"..") || isOfSingleLetters(word) ||
           std::ranges::find(abbreviations, word) != abbreviations.end();
}

} // namespace

QString replacementFor(const QString& original, const QString& suggestion) {
    QStringView text = trimmed(suggestion);
    const bool isStopped = endsWithFullStop(text) && !endsWithAbbreviation(text);
    const QStringView core = trimmed(original);
    if (isStopped && !core.isEmpty() && !endsSentence(core)) text.chop(1);
    return fittedTo(original, text.isEmpty() ? suggestion : text.toString());
}

} // namespace vorq
