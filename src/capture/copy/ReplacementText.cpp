#include "capture/copy/ReplacementText.h"

#include "support/text/Text.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// "" without any.
QString newlineOf(const QString& text) {
    for (const auto* newline : {u"\r\n", u"\n", u"\r"})
        if (text.contains(QStringView(newline))) return QString::fromUtf16(newline);
    return {};
}

QString withNewlines(QString text, const QString& newline) {
    text.replace(u"\r\n"_s, u"\n"_s);
    text.replace(u'\r', u'\n');
    return newline == u"\n" ? text : text.replace(u"\n"_s, newline);
}

} // namespace

QString fittedTo(const QString& original, const QString& replacement) {
    QString fitted = replacement;
    const QStringView core = trimmed(original);
    if (!core.isEmpty()) {
        const qsizetype before = core.begin() - QStringView(original).begin();
        fitted = original.first(before) + trimmed(replacement).toString() +
                 original.sliced(before + core.size());
    }
    const QString newline = newlineOf(original);
    return newline.isEmpty() ? fitted : withNewlines(fitted, newline);
}

} // namespace vorq
