#include "backend/api/AIAnalysis.h"
#include "support/text/Text.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

constexpr std::array<QStringView, 8> diagnostics = {
    u"backend fallback",
    u"add ai provider api keys",
    u"add openrouter_api_key",
    u"vorq is signed in",
    u"no highlighted text was available",
    u"once the backend key is configured",
    u"offline fallback",
    u"enable real ai",
};

constexpr std::array<QStringView, 10> noCorrections = {
    u"none",
    u"none needed",
    u"no corrections",
    u"no correction",
    u"no changes",
    u"n/a",
    u"na",
    u"nil",
    u"null",
    u"-",
};

QStringView withoutFullStops(QStringView text) {
    const auto isStop = [](QChar character) { return character == u'.' || character == u'!'; };
    while (!text.isEmpty() && isStop(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isStop(text.back()))
        text.chop(1);
    return text;
}

QString sourceLine(const AISource& source) {
    const QString title = trimmed(source.title.value_or(QString())).toString();
    const QString url = trimmed(source.url.value_or(QString())).toString();
    if (title.isEmpty() && url.isEmpty()) return {};
    if (title.isEmpty() || url.isEmpty()) return u"• "_s + title + url;
    return u"• "_s + title + u" — "_s + url;
}

} // namespace

QString scrubDiagnostic(QStringView text) {
    const QStringView shown = trimmed(text);
    const QString lowered = shown.toString().toLower();
    const auto occurs = [&lowered](QStringView diagnostic) { return lowered.contains(diagnostic); };
    return std::ranges::any_of(diagnostics, occurs) ? QString() : shown.toString();
}

QString visibleCorrections(QStringView text) {
    const QStringView shown = trimmed(text);
    const QString lowered = shown.toString().toLower();
    const QString said = withSingleBlanks(withoutFullStops(lowered));
    const bool saysNone = std::ranges::find(noCorrections, said) != noCorrections.end();
    return saysNone ? QString() : shown.toString();
}

QString displayText(const AIAnalysis& analysis) {
    const QString summary = scrubDiagnostic(withHealedLineBreaks(analysis.summary));
    const QString feedback = scrubDiagnostic(withHealedLineBreaks(analysis.feedback));
    const QString corrections = scrubDiagnostic(visibleCorrections(analysis.corrections));

    QStringList parts;
    if (!summary.isEmpty()) parts << summary;
    if (!feedback.isEmpty() && feedback != summary) parts << feedback;
    if (!corrections.isEmpty()) parts << corrections;

    QStringList lines;
    for (const AISource& source : analysis.sources) {
        if (const QString line = sourceLine(source); !line.isEmpty()) lines << line;
    }
    if (!lines.isEmpty()) parts << u"**Sources**\n"_s + lines.join(u'\n');

    return parts.isEmpty() ? u"Vorq had nothing to say."_s : parts.join(u"\n\n"_s);
}

} // namespace vorq
