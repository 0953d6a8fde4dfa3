#include "rendering/DenseParagraph.h"

#include "support/text/Characters.h"
#include "support/text/CodeUnits.h"
#include "support/text/Graphemes.h"

#include <algorithm>

namespace vorq {
namespace {

constexpr qsizetype densestParagraph = 280;
constexpr qsizetype longSentence = 180;

// Whether the mark at `index` ends a sentence inside the text.
bool endsSentence(QStringView text, qsizetype index) {
    return index + 2 < text.size() && text[index + 1] == u' ' &&
           isCharactersAt(text, index, text.sliced(index, 2)) &&
           isUppercaseCharacter(firstCharacter(text.sliced(index + 2)));
}

// End of the first sentence: behind its mark, or the end of the text.
qsizetype sentenceEnd(QStringView text) {
    qsizetype end = text.size();
    codeunits::forEach(
        text, 0,
        [&](qsizetype index) {
            if (!endsSentence(text, index)) return true;
            end = index + 1;
            return false;
        },
        u'.', u'!', u'?');
    return end;
}

// What follows a sentence and the blank behind it.
QStringView afterSentence(QStringView text, qsizetype end) {
    return text.sliced(std::min(end + 1, text.size()));
}

bool hasThreeSentences(QStringView text) {
    const QStringView second = afterSentence(text, sentenceEnd(text));
    return !afterSentence(second, sentenceEnd(second)).isEmpty();
}

} // namespace

DenseParagraphs::DenseParagraphs(QStringView text)
    : m_rest(text),
      m_isDense(graphemeCountAtLeast(text, densestParagraph) && hasThreeSentences(text)) {}

std::optional<QStringView> DenseParagraphs::next() {
    if (m_rest.isEmpty()) return std::nullopt;
    qsizetype end = m_isDense ? sentenceEnd(m_rest) : m_rest.size();
    if (end < m_rest.size() && !graphemeCountAtLeast(m_rest.first(end), longSentence))
        end += 1 + sentenceEnd(afterSentence(m_rest, end));
    const QStringView paragraph = m_rest.first(end);
    m_rest = afterSentence(m_rest, end);
    return paragraph;
}

} // namespace vorq
