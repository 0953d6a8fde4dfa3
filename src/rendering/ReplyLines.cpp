#include "rendering/ReplyLines.h"

#include "support/text/Graphemes.h"

#include <QString>

#include <array>

namespace vorq::replylines {
namespace {

// The cues of a lead-in to a list, each with the blank that may stand before it.
constexpr std::array<QStringView, 10> bridgeCues = {
    u" such as:", u" including:", u" for example:", u" e.g.:",          u" eg:",
    u" namely:",  u" like:",      u" as follows:",  u" the following:", u" examples:"};

constexpr qsizetype longestBridge = 80;
constexpr qsizetype longestLabel = 60;
constexpr qsizetype longestLabelWithPoint = 40;
constexpr qsizetype longestBareHeading = 48;
constexpr int mostBareHeadingWords = 8;

bool isBoldEnclosed(QStringView text) {
    return text.size() >= 5 && startsWithCharacters(text, boldMarker) &&
           endsWithCharacters(text, boldMarker);
}

QStringView withoutEnds(QStringView text) {
    return text.sliced(2, text.size() - 4);
}

bool isUpperOrNumber(QStringView character) {
    return isUppercaseCharacter(character) || isNumberCharacter(character);
}

bool holdsSentenceEnd(QStringView text) {
    for (const QStringView mark : {u". ", u"? ", u"! "}) {
        if (endsWithCharacters(text, mark.first(1)) || containsCharacters(text, mark)) return true;
    }
    return false;
}

// Whether the point of an item can follow what begins the line. No number but the ASCII digits is
// below U+0080, and looking up the others takes time.
bool reachesPointByNumbers(QStringView line) {
    for (const QChar unit : line) {
        if (unit < QChar(0x80) && (unit < u'0' || unit > u'9')) return unit == u'.';
    }
    return false;
}

// One to eight words, at least half of which begin upper-case or with a number.
bool hasHeadingWords(QStringView text) {
    int words = 0;
    int headed = 0;
    bool inWord = false;
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype end = graphemeEnd(text, start);
        const QStringView character = text.sliced(start, end - start);
        const bool space = isWhitespaceCharacter(character);
        if (!space && !inWord) {
            ++words;
            if (isUpperOrNumber(character)) ++headed;
        }
        inWord = !space;
        start = end;
    }
    return words >= 1 && words <= mostBareHeadingWords && headed >= (words + 1) / 2;
}

} // namespace

bool isTableRow(QStringView line) {
    return startsWithCharacters(line, u"|") && indexOfCharacters(line, u"|", 1) >= 0;
}

bool isTableSeparator(QStringView line) {
    bool hasDash = false;
    for (const QChar unit : line) {
        if (unit != u'|' && unit != u'-' && unit != u':' && unit != u' ') return false;
        hasDash = hasDash || unit == u'-';
    }
    return hasDash && isTableRow(line);
}

bool isDivider(QStringView line) {
    if (line.size() < 3) return false;
    const QChar mark = line.front();
    if (mark != u'-' && mark != u'*' && mark != u'_') return false;
    for (const QChar unit : line) {
        if (unit != mark) return false;
    }
    return true;
}

std::optional<QStringView> atxHeading(QStringView line) {
    qsizetype marks = 0;
    while (marks < line.size() && isCharactersAt(line, marks, u"#"))
        ++marks;
    if (marks < 1 || marks > 6) return std::nullopt;
    const QStringView text = trimmedBlanks(line.sliced(marks));
    if (text.isEmpty()) return std::nullopt;
    return text;
}

std::optional<QStringView> boldLabel(QStringView line) {
    if (!startsWithCharacters(line, boldMarker)) return std::nullopt;
    const QStringView inner = isBoldEnclosed(line) ? withoutEnds(line) : line.sliced(2);
    if (containsCharacters(inner, boldMarker) || graphemeCountAtLeast(inner, longestLabel + 1))
        return std::nullopt;
    if (containsCharacters(inner, u".") && graphemeCountAtLeast(inner, longestLabelWithPoint + 1))
        return std::nullopt;
    return inner;
}

bool looksLikeBareSectionHeading(QStringView line) {
    const QStringView text = trimmed(line);
    if (!graphemeCountAtLeast(text, 2) || graphemeCountAtLeast(text, longestBareHeading + 1))
        return false;
    // This leaves no line that begins with the mark of another block.
    if (!isUpperOrNumber(firstCharacter(text))) return false;
    return !containsCharacters(text, boldMarker) && !holdsSentenceEnd(text) &&
           hasHeadingWords(text);
}

std::optional<QStringView> numberedItem(QStringView line) {
    if (!reachesPointByNumbers(line)) return std::nullopt;
    qsizetype end = 0;
    while (end < line.size()) {
        const qsizetype next = graphemeEnd(line, end);
        if (!isNumberCharacter(line.sliced(end, next - end))) break;
        end = next;
    }
    if (end == 0 || !isCharactersAt(line, end, u". ")) return std::nullopt;
    return line.sliced(end + 2);
}

bool isListBridge(QStringView item) {
    const QStringView text = trimmed(item);
    if (!endsWithCharacters(text, u":")) return false;
    const QString lower = text.toString().toLower();
    for (const QStringView cue : bridgeCues) {
        if (endsWithCharacters(lower, cue.sliced(1)) || containsCharacters(lower, cue)) return true;
    }
    return !containsCharacters(text, u".") && !graphemeCountAtLeast(text, longestBridge + 1);
}

QStringView withoutOuterBold(QStringView text) {
    const QStringView plain = trimmed(text);
    if (!isBoldEnclosed(plain)) return plain;
    const QStringView inner = withoutEnds(plain);
    return containsCharacters(inner, boldMarker) ? plain : inner;
}

QStringView withoutOuterBars(QStringView line) {
    if (startsWithCharacters(line, u"|")) line = line.sliced(1);
    if (endsWithCharacters(line, u"|")) line.chop(1);
    return line;
}

} // namespace vorq::replylines
