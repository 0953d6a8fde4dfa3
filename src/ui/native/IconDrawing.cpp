#include "ui/native/IconDrawing.h"

#include <QFile>
#include <QHash>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

QString iconPath(const QString& name) {
    return u":/qt/qml/Vorq/Native/icons/%1.svg"_s.arg(name);
}

QString iconText(const QString& name) {
    QFile file(iconPath(name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(file.readAll());
}

// Each element is a line of its own, between one that opens the document and one that closes it.
IconDrawing parsedIcon(const QString& text) {
    const qsizetype bodyStart = text.indexOf(u'>') + 1;
    const QString head = text.left(bodyStart);
    IconDrawing drawing{head, head};
    bool cutsOut = false;
    for (const QStringView line : QStringView(text).mid(bodyStart).split(u'\n')) {
        const bool isCutOut = line.contains(u"stroke=\"#FFFFFF\"");
        (isCutOut ? drawing.cutOut : drawing.drawn) += line;
        cutsOut = cutsOut || isCutOut;
    }
    drawing.cutOut = cutsOut ? drawing.cutOut + u"</svg>"_s : QString();
    return drawing;
}

} // namespace

IconDrawing IconDrawing::of(const QString& name) {
    static QHash<QString, IconDrawing> known;
    const auto found = known.constFind(name);
    if (found != known.constEnd()) return *found;
    const QString text = iconText(name);
    return *known.insert(name, parsedIcon(text.isEmpty() ? iconText(u"square"_s) : text));
}

} // namespace vorq
