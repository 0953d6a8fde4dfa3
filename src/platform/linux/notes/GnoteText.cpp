#include "platform/linux/notes/GnoteText.h"

#include "platform/NotesBridge.h"
#include "support/text/Text.h"

#include <QXmlStreamReader>

namespace vorq::gnote {
namespace {

bool isWellFormed(const QString& xml) {
    QXmlStreamReader reader(xml);
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd())
        reader.readNext();
    return !reader.hasError();
}

bool isStorable(char16_t unit) {
    return unit == u'\t' || unit == u'\n' ||
           (unit >= u' ' && unit != 0x7F && unit < char16_t{0xFFFE});
}

} // namespace

QString storableText(QStringView text) {
    QString storable;
    storable.reserve(text.size());
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar unit = text[index];
        const QChar next = index + 1 < text.size() ? text[index + 1] : QChar();
        if (unit.isHighSurrogate() && next.isLowSurrogate()) {
            storable.append(unit).append(next);
            ++index;
        } else if (unit.isSurrogate()) {
            storable += QChar(QChar::ReplacementCharacter);
        } else if (unit == u'\r' && next == u'\n') {
            continue;
        } else if (isNewline(unit.unicode())) {
            storable += u'\n';
        } else if (isStorable(unit.unicode())) {
            storable += unit;
        }
    }
    return storable;
}

QString storableTitle(QStringView title) {
    const QString line = notesbridge::inOneLine(storableText(title));
    return line.isEmpty() ? notesbridge::untitled : line;
}

std::optional<QString> withAppended(const QString& contentXml, QStringView text) {
    const QString added = "\n\n" + storableText(text).toHtmlEscaped();
    QString xml = storableText(contentXml);
    const qsizetype end = xml.lastIndexOf(u"</note-content>"_qs);
    if (end >= 0) {
        xml.insert(end, added);
    } else {
        const qsizetype empty = xml.lastIndexOf(u"/>"_qs); // of an element without content
        if (empty < 0) return std::nullopt;
        xml.replace(empty, 2, u'>' + added + u"</note-content>"_qs);
    }
    return isWellFormed(xml) ? std::optional(xml) : std::nullopt;
}

} // namespace vorq::gnote
