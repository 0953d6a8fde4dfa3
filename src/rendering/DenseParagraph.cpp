#include "rendering/DenseParagraph.h"

#include "support/Characters.h"
#include "support/CodeUnits.h"
#include "support/Graphemes.h"

namespace vorq {
namespace {

constexpr qsizetype longSentence = 180;

// Whether the mark at `index` ends a sentence inside the text.
bool endsSentence(QStringView text, qsizetype index) {
    if (index + 2 >= text.size() || text[index + 1] != u' ') return false;
    return isCharactersAt(text, index, text.sliced(index, 2)) &&
           isUppercaseCharacter(firstCharacter(text.sliced(index + 2)));
}

std::vector<QStringView> splitSentences(QStringView text) {
    std::vector<QStringView> sentences;
    qsizetype start = 0;
    codeunits::forEach(
        text, 0,
        [&](qsizetype index) {
            if (!endsSentence(text, index)) return true;
            sentences.push_back(text.sliced(start, index + 1 - start));
            start = index + 2;
            return true;
        },
        u'.', u'!', u'?');
    sentences.push_back(text.sliced(start));
    return sentences;
}

} // namespace

std::vector<QStringView> splitDenseParagraph(QStringView text) {
    if (!graphemeCountAtLeast(text, densestParagraph)) return {text};
    const std::vector<QStringView> sentences = splitSentences(text);
    if (sentences.size() < 3) return {text};
    std::vector<QStringView> paragraphs;
    for (std::size_t first = 0; first < sentences.size(); ++first) {
        std::size_t last = first;
        if (!graphemeCountAtLeast(sentences[first], longSentence) && first + 1 < sentences.size())
            ++last;
        paragraphs.emplace_back(sentences[first].begin(), sentences[last].end());
        first = last;
    }
    return paragraphs;
}

} // namespace vorq
