#include "writing/RewriteExtraction.h"

#include "backend/api/AIAnalysis.h"
#include "support/text/Characters.h"
#include "support/text/Text.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr QStringView fence = u"```";
constexpr auto dashes = std::to_array<QStringView>({u" — ", u" - "});

constexpr bool isQuoteOrAsterisk(char32_t codePoint) {
    return codePoint == U'*' || codePoint == U'"' || codePoint == U'\'';
}

// The units of a list marker at the beginning of a line; 0 without one.
qsizetype listMarkerLength(QStringView line) {
    static const QRegularExpression marker(uR"(^(\d+[\.\)]\s*|[-•]\s*))"_s,
                                           QRegularExpression::UseUnicodePropertiesOption);
    const QRegularExpressionMatch match = marker.match(line);
    return match.hasMatch() ? match.capturedLength() : 0;
}

QStringView firstFilledLine(QStringView text) {
    for (const QStringView line : splitAtNewlines(text))
        if (const QStringView core = trimmed(line); !core.isEmpty()) return core;
    return {};
}

QStringView beforeDash(QStringView line) {
    for (const QStringView dash : dashes)
        if (const qsizetype at = indexOfCharacters(line, dash); at >= 0) return line.first(at);
    return line;
}

QStringView firstParagraph(QStringView text) {
    const qsizetype end = text.indexOf(u"\n\n"_s);
    const QStringView first = trimmed(end < 0 ? text : text.first(end));
    return first.isEmpty() ? text : first;
}

// What stands between fences, if that is all there is.
QStringView unfenced(QStringView text) {
    QStringView core = trimmed(text);
    const qsizetype lineEnd = core.indexOf(u'\n');
    if (!core.startsWith(fence) || lineEnd < 0 || !core.endsWith(fence)) return text;
    // Behind the first fence stands, at most, the name of a language.
    if (core.first(lineEnd).sliced(fence.size()).contains(u'`')) return text;
    core = core.sliced(lineEnd + 1);
    if (core.size() < fence.size()) return text;
    core.chop(fence.size());
    const bool isWhole = core.isEmpty() || core.endsWith(u'\n');
    return isWhole && !core.contains(fence) ? core : text;
}

bool asksForLines(QStringView ask) {
    static const QRegularExpression words(
        uR"(\b(bullets?|bulleted|bullet-?points?|(check)?lists?|liste|lista|stichpunkt\w*|lines)"
        uR"(|steps|paragraphs|points|tables?|tabellen?|poems?)\b)"_s,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    return words.match(ask).hasMatch();
}

} // namespace

RewriteForm rewriteFormOf(QStringView original, QStringView ask) {
    const QStringView core = trimmed(original);
    RewriteForm form;
    form.lines = firstFilledLine(core).size() < core.size() || asksForLines(ask);
    form.dashes = std::ranges::any_of(
        dashes, [core](QStringView dash) { return containsCharacters(core, dash); });
    form.listMarker = listMarkerLength(core) > 0;
    form.quotes = trimmedOf<isQuoteOrAsterisk>(core).size() < core.size();
    return form;
}

QString extractRewrite(const QString& answer, const QString& fallbackSource,
                       const RewriteForm& form) {
    const QStringView text = trimmed(answer);
    if (form.lines) return text.toString();
    QStringView line = firstFilledLine(text);
    if (!form.listMarker) line = line.sliced(listMarkerLength(line));
    if (!form.dashes) line = beforeDash(line);
    if (!form.quotes) line = trimmedOf<isQuoteOrAsterisk>(line);
    line = trimmed(line);
    if (!line.isEmpty() && line != fallbackSource) return line.toString();
    return firstParagraph(text).toString();
}

QString rewriteOf(const AIAnalysis& analysis, const QString& original, QStringView ask) {
    // Beside the summary stand remarks and sources, which are none of the writer's text.
    AIAnalysis alone;
    alone.summary = analysis.summary;
    const QString silence = displayText(AIAnalysis());
    QString text = displayText(alone);
    if (text == silence) text = displayText(analysis);
    if (text == silence) return {};
    return extractRewrite(unfenced(text).toString(), original, rewriteFormOf(original, ask));
}

} // namespace vorq
