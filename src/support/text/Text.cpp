#include "support/text/Text.h"

#include "support/text/Characters.h"
#include "support/text/CodeUnits.h"

namespace vorq {

QString withSingleBlanks(QStringView text) {
    QString result;
    bool inSpace = false;
    for (const QChar character : text) {
        const bool space = isWhitespaceOrNewline(character.unicode());
        if (!space) result += character;
        if (space && !inSpace) result += u' ';
        inSpace = space;
    }
    return result;
}

std::vector<QStringView> splitAtNewlines(QStringView text) {
    std::vector<QStringView> pieces;
    qsizetype start = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        if (!isNewline(text[index].unicode())) continue;
        pieces.push_back(text.sliced(start, index - start));
        start = index + 1;
    }
    pieces.push_back(text.sliced(start));
    return pieces;
}

QStringView firstLine(QStringView text) {
    qsizetype start = 0;
    while (start < text.size() && isNewline(text[start].unicode()))
        ++start;
    qsizetype end = start;
    while (end < text.size() && !isNewline(text[end].unicode()))
        ++end;
    return text.sliced(start, end - start);
}

QString withHealedLineBreaks(QStringView text) {
    QString healed;
    qsizetype copied = 0;
    codeunits::forEach(
        text, 0,
        [&](qsizetype index) {
            const QStringView pattern = text[index] == u'\r' ? u"\r\n" : u"\\n";
            if (!isCharactersAt(text, index, pattern)) return true;
            if (copied == 0) healed.reserve(text.size());
            healed.append(text.sliced(copied, index - copied)).append(u'\n');
            copied = index + 2;
            return true;
        },
        u'\r', u'\\');
    if (copied == 0) return text.toString();
    return healed.append(text.sliced(copied));
}

} // namespace vorq
