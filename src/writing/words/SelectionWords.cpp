#include "writing/words/SelectionWords.h"

#include "support/text/Text.h"

#include <QList>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace vorq {
namespace {

bool isWord(QStringView piece) {
    return std::ranges::any_of(piece.toUcs4(),
                               [](uint unit) { return QChar::isLetterOrNumber(unit); });
}

} // namespace

SelectionWords::SelectionWords(QString text)
    : m_text(std::move(text)), m_isBoundary(static_cast<std::size_t>(m_text.size()) + 1) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, m_text);
    m_isBoundary.front() = true;
    for (qsizetype begin = 0; begin < m_text.size();) {
        const qsizetype next = finder.toNextBoundary();
        const qsizetype end = next < 0 ? m_text.size() : next;
        if (isWord(QStringView(m_text).sliced(begin, end - begin)))
            m_words.push_back({.location = begin, .length = end - begin});
        begin = end;
        m_isBoundary[static_cast<std::size_t>(begin)] = true;
    }
}

bool SelectionWords::isBoundary(qsizetype at) const {
    return m_isBoundary[static_cast<std::size_t>(at)];
}

std::vector<TextRange> SelectionWords::find(QStringView word, Qt::CaseSensitivity by) const {
    std::vector<TextRange> found;
    if (word.isEmpty()) return found;
    for (qsizetype at = m_text.indexOf(word, 0, by); at >= 0;) {
        const bool isWhole = isBoundary(at) && isBoundary(at + word.size());
        if (isWhole) found.push_back({.location = at, .length = word.size()});
        at = m_text.indexOf(word, isWhole ? at + word.size() : at + 1, by);
    }
    return found;
}

std::vector<TextRange> SelectionWords::occurrencesOf(QStringView word) const {
    std::vector<TextRange> found = find(word, Qt::CaseSensitive);
    return found.empty() ? find(word, Qt::CaseInsensitive) : found;
}

qsizetype SelectionWords::indexAt(qsizetype location) const {
    const auto after = std::ranges::upper_bound(m_words, location, {}, &TextRange::location);
    return std::max<qsizetype>(after - m_words.begin() - 1, 0);
}

QStringView SelectionWords::wordBefore(qsizetype location) const {
    const auto here = std::ranges::lower_bound(m_words, location, {}, &TextRange::location);
    if (here == m_words.begin()) return {};
    const TextRange before = *std::prev(here);
    const qsizetype end = before.location + before.length;
    const QStringView between = QStringView(m_text).sliced(end, location - end);
    return trimmedBlanks(between).isEmpty() ? sliceOf(m_text, before) : QStringView();
}

QStringView sliceOf(QStringView text, TextRange range) {
    if (range.location < 0 || range.length < 0 || range.location > text.size()) return {};
    if (range.length > text.size() - range.location) return {};
    return text.sliced(range.location, range.length);
}

} // namespace vorq
