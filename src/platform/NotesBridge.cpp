#include "platform/NotesBridge.h"

#include "support/text/Text.h"

namespace vorq::notesbridge {

QString inOneLine(QStringView text) {
    QString line;
    for (const QChar unit : text)
        line += isNewline(unit.unicode()) ? QChar(u' ') : unit;
    return trimmed(line).toString();
}

QString withTitle(const QString& title, const QString& body) {
    if (trimmed(body).isEmpty()) return title;
    if (trimmed(firstLine(body)) == title) return body;
    return title + "\n\n" + body;
}

} // namespace vorq::notesbridge
