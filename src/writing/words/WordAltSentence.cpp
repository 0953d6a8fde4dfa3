#include "writing/words/WordAltSentence.h"

#include "support/text/Text.h"
#include "writing/words/SelectionWords.h"

#include <QTextBoundaryFinder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Blanks at the ends are kept, though of several in a row but one.
QString onOneLine(QStringView text) {
    QString line = withSingleBlanks(text);
    if (text.isEmpty()) return line;
    if (isWhitespaceOrNewline(text.back().unicode()) && !line.endsWith(u' ')) line += u' ';
    if (isWhitespaceOrNewline(text.front().unicode()) && !line.startsWith(u' ')) line.prepend(u' ');
    return line;
}

QStringView fromBlank(QStringView text) {
    const auto blank =
        std::ranges::find_if(text, [](QChar unit) { return isBlank(unit.unicode()); });
    return blank == text.end() ? text : text.sliced(blank - text.begin());
}

QStringView toBlank(QStringView text) {
    const qsizetype at = text.lastIndexOf(u' ');
    return at < 0 ? text : text.first(at);
}

QString before(QStringView text) {
    if (text.size() <= mostAroundWord) return onOneLine(text);
    return u"…"_s + onOneLine(fromBlank(text.last(mostAroundWord)));
}

QString after(QStringView text) {
    if (text.size() <= mostAroundWord) return onOneLine(text);
    return onOneLine(toBlank(text.first(mostAroundWord))) + u"…"_s;
}

} // namespace

std::vector<DifferencePart> sentenceWith(const QString& selection, const WritingWordAlt& alt) {
    using enum DifferencePart::Kind;
    if (!alt.utf16Range || sliceOf(selection, *alt.utf16Range).isEmpty()) return {};
    const qsizetype begin = alt.utf16Range->location;
    const qsizetype end = begin + alt.utf16Range->length;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Sentence, selection);
    finder.setPosition(end);
    const qsizetype next = finder.isAtBoundary() ? end : finder.toNextBoundary();
    finder.setPosition(begin);
    const qsizetype last = finder.isAtBoundary() ? begin : finder.toPreviousBoundary();
    const QStringView text(selection);
    const qsizetype from = std::max<qsizetype>(last, 0);
    const qsizetype to = next < 0 ? text.size() : next;
    QStringView tail = text.sliced(end, to - end);
    while (!tail.isEmpty() && isWhitespaceOrNewline(tail.back().unicode()))
        tail.chop(1);
    QStringView head = text.sliced(from, begin - from);
    while (!head.isEmpty() && isWhitespaceOrNewline(head.front().unicode()))
        head = head.sliced(1);
    std::vector<DifferencePart> parts;
    if (const QString shown = before(head); !shown.isEmpty()) parts.push_back({Same, shown});
    parts.push_back({Added, alt.alternative});
    if (const QString shown = after(tail); !shown.isEmpty()) parts.push_back({Same, shown});
    return parts;
}

} // namespace vorq
