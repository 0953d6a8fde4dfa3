#include "rendering/ReplyBreaks.h"

#include "support/text/Characters.h"
#include "support/text/CodeUnits.h"
#include "support/text/Text.h"

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <utility>

namespace vorq::replybreaks {
namespace {

constexpr qsizetype longestLabel = 60;
constexpr qsizetype mostHeadingTail = 48;

// What the first look over the whole text finds.
struct Marks {
    qsizetype fences = 0;
    qsizetype bolds = 0;
    qsizetype lastBold = -1;
    bool escaped = false;
};

Marks marksOf(QStringView text) {
    Marks marks;
    qsizetype next = 0;
    codeunits::forEach(
        text, 0,
        [&](qsizetype index) {
            if (index < next) return true;
            switch (text[index].unicode()) {
            case u'*':
                if (!isCharactersAt(text, index, u"**")) return true;
                ++marks.bolds;
                marks.lastBold = index;
                next = index + 2;
                return true;
            case u'`':
                if (!isCharactersAt(text, index, u"```")) return true;
                ++marks.fences;
                next = index + 3;
                return true;
            default:
                marks.escaped = true;
                return true;
            }
        },
        u'*', u'`', u'\\', u'\r');
    return marks;
}

bool endsInOpenBold(const Marks& marks, QStringView text) {
    const bool inFence = marks.fences % 2 == 1;
    return !inFence && marks.bolds % 2 == 1 && marks.lastBold != text.size() - 2;
}

// Copies a text piece by piece, as found, with replacements between.
class Rewriting {
  public:
    explicit Rewriting(QString& text) : m_text(text) {}

    void replace(qsizetype start, qsizetype end, std::initializer_list<QStringView> pieces) {
        m_result.append(QStringView(m_text).sliced(m_copied, start - m_copied));
        for (const QStringView piece : pieces)
            m_result.append(piece);
        m_copied = end;
    }

    void finish() {
        if (m_copied == 0) return;
        m_result.append(QStringView(m_text).sliced(m_copied));
        m_text = std::move(m_result);
    }

  private:
    QString& m_text;
    QString m_result;
    qsizetype m_copied = 0;
};

void replaceCharacters(QString& text, QStringView pattern, QStringView replacement) {
    Rewriting rewriting(text);
    for (qsizetype at = indexOfCharacters(text, pattern); at >= 0;) {
        const qsizetype end = at + pattern.size();
        rewriting.replace(at, end, {replacement});
        at = indexOfCharacters(text, pattern, end);
    }
    rewriting.finish();
}

// The three rules below are regular expressions, which see code points and not characters.

// End of a label that starts at `from`: the first "*" or line feed, or the end of the text.
qsizetype labelEnd(QStringView text, qsizetype from) {
    const qsizetype end = codeunits::find(text, from, u'*', u'\n');
    return end < 0 ? text.size() : end;
}

bool hasCodePointsAtMost(QStringView text, qsizetype count) {
    if (text.size() > 2 * count) return false;
    qsizetype codePoints = text.size();
    for (qsizetype index = 1; index < text.size(); ++index) {
        if (text[index - 1].isHighSurrogate() && text[index].isLowSurrogate()) --codePoints;
    }
    return codePoints <= count;
}

// " \*\*([^*\n]{1,60})\*\*": a label in mid-line stands on a line of its own.
void breakAroundLabels(QString& text) {
    constexpr QStringView opener = u" **";
    Rewriting rewriting(text);
    const QStringView view = text;
    for (qsizetype at = view.indexOf(opener); at >= 0;) {
        const qsizetype start = at + opener.size();
        const qsizetype end = labelEnd(view, start);
        const QStringView label = view.sliced(start, end - start);
        if (!label.isEmpty() && view.sliced(end).startsWith(u"**") &&
            hasCodePointsAtMost(label, longestLabel)) {
            rewriting.replace(at, end + 2, {u"\n\n**", label, u"**\n"});
            at = view.indexOf(opener, end + 2);
        } else {
            at = view.indexOf(opener, at + 1);
        }
    }
    rewriting.finish();
}

// " \*\*([^*\n]+)$": so does a label that the text ends in.
void breakBeforeOpenLabel(QString& text) {
    constexpr QStringView opener = u" **";
    const qsizetype at = text.lastIndexOf(opener);
    if (at < 0) return;
    const qsizetype start = at + opener.size();
    if (start < text.size() && labelEnd(text, start) == text.size())
        text.replace(at, opener.size(), u"\n\n**"_qs);
}

bool isUpper(QChar unit) {
    return unit >= u'A' && unit <= u'Z';
}

bool isLetterOrDigit(QChar unit) {
    return isUpper(unit) || (unit >= u'a' && unit <= u'z') || (unit >= u'0' && unit <= u'9');
}

bool isHeadingTail(QChar unit) {
    return isLetterOrDigit(unit) || unit == u'/' || unit == u'\'' || unit == u'\u2019' ||
           unit == u'-' || unit == u' ';
}

// The leftmost blank at or after `from` that only a heading stands behind, up to `end`.
std::optional<qsizetype> bareHeadingStart(QStringView text, qsizetype from, qsizetype end) {
    const qsizetype farthest = std::max(from, end - 3 - mostHeadingTail);
    std::optional<qsizetype> start;
    for (qsizetype at = end - 1; at >= farthest && isHeadingTail(text[at]); --at) {
        if (at + 3 <= end && text[at] == u' ' && isUpper(text[at + 1]) &&
            isLetterOrDigit(text[at + 2]))
            start = at;
    }
    return start;
}

// " ([A-Z][A-Za-z0-9][A-Za-z0-9/'’\- ]{0,48}) - \*\*": a heading, and a list below it. Since a
// heading holds no "*", it ends at the first " - **" after it.
void breakAroundBareHeadings(QString& text) {
    constexpr QStringView listOpener = u" - **";
    Rewriting rewriting(text);
    const QStringView view = text;
    qsizetype from = 0;
    for (qsizetype end = view.indexOf(listOpener); end >= 0;
         end = view.indexOf(listOpener, end + 1)) {
        const std::optional<qsizetype> start = bareHeadingStart(view, from, end);
        if (!start) continue;
        from = end + listOpener.size();
        const QStringView heading = view.sliced(*start + 1, end - *start - 1);
        rewriting.replace(*start, from, {u"\n\n", heading, u"\n- **"});
    }
    rewriting.finish();
}

void inventBreaks(QString& text) {
    replaceCharacters(text, u" --- ", u"\n\n---\n\n");
    replaceCharacters(text, u" ---", u"\n\n---\n\n");
    breakAroundLabels(text);
    breakBeforeOpenLabel(text);
    breakAroundBareHeadings(text);
    replaceCharacters(text, u" - ", u"\n- ");
}

} // namespace

QStringView mended(QStringView text, QString& storage) {
    const Marks marks = marksOf(text);
    const bool closes = endsInOpenBold(marks, text);
    if (marks.escaped || closes) {
        storage = marks.escaped ? withHealedLineBreaks(text) : text.toString();
        if (closes) storage.append(u"**");
        text = storage;
    }
    text = trimmed(text);
    if (codeunits::find(text, 0, u'-', u'*') < 0 || lineFeed(text, 0) >= 0) return text;
    QString broken = text.toString();
    inventBreaks(broken);
    storage = std::move(broken);
    return storage;
}

} // namespace vorq::replybreaks
