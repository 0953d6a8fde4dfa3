#include "capture/attachments/AttachedText.h"

#include "support/text/Text.h"

#include <QStringDecoder>

namespace vorq {
namespace {

// Nothing for bytes that are not of the encoding from end to end. A decoder that keeps a state
// would wait for the rest of a character that is not whole.
std::optional<QString> decodedAs(const QByteArray& bytes, QStringDecoder::Encoding encoding) {
    QStringDecoder decoder(encoding, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError()) return std::nullopt;
    return text;
}

// Any two bytes are a unit, so that most files of another kind are UTF-16 too; but soon they hold
// half a character, or one that no text has.
std::optional<QString> decodedAsUtf16(const QByteArray& bytes, bool isCut) {
    if (bytes.size() % 2 != 0) return std::nullopt;
    std::optional<QString> text = decodedAs(bytes, QStringDecoder::Utf16);
    if (!text) return std::nullopt;
    if (isCut && !text->isEmpty() && text->back().isHighSurrogate()) text->chop(1);
    if (!text->isValidUtf16() || text->contains(QChar::Null) || text->contains(QChar(0xFFFE)) ||
        text->contains(QChar(0xFFFF)))
        return std::nullopt;
    return text;
}

void dropCutCharacter(QByteArray& bytes) {
    qsizetype end = bytes.size();
    for (int back = 0; back < 3 && end > 0 && (bytes[end - 1] & 0xC0) == 0x80; ++back)
        --end;
    if (end > 0 && (bytes[end - 1] & 0x80) != 0) bytes.truncate(end - 1);
}

// Each tag is a blank. What opens and is not closed is text, and so is an empty tag.
QString withoutXmlTags(QStringView xml) {
    QString text;
    text.reserve(xml.size());
    qsizetype from = 0;
    for (qsizetype start = xml.indexOf(u'<'); start >= 0; start = xml.indexOf(u'<', start)) {
        const qsizetype end = xml.indexOf(u'>', start + 1);
        if (end < 0) break;
        if (end == start + 1) {
            ++start;
            continue;
        }
        text += xml.sliced(from, start - from);
        text += u' ';
        from = start = end + 1;
    }
    text += xml.sliced(from);
    return text;
}

} // namespace

std::optional<QString> decodeAttachedText(QByteArray bytes, bool isCut) {
    QByteArray whole = bytes;
    if (isCut) dropCutCharacter(whole);
    if (auto text = decodedAs(whole, QStringDecoder::Utf8)) return text;
    return decodedAsUtf16(bytes, isCut);
}

std::optional<QString> slideText(QByteArray xml, bool isCut) {
    if (isCut) dropCutCharacter(xml);
    const auto text = decodedAs(xml, QStringDecoder::Utf8);
    if (!text) return std::nullopt;
    const QString found = withSingleBlanks(withoutXmlTags(*text));
    const QStringView bare = trimmed(found);
    if (bare.isEmpty()) return std::nullopt;
    return bare.toString();
}

} // namespace vorq
