#include "library/notes/NoteMarkdown.h"

#include "library/notes/VorqNoteImport.h"
#include "library/richtext/NoteRichText.h"
#include "library/rtf/RtfReader.h"
#include "support/text/Text.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Style = NoteTextStyle;

// A paragraph as Markdown, and whether it stands close to one of the same kind before it.
struct Paragraph {
    enum class Kind : std::uint8_t { Own, Bullet, Number, Quote, Code };
    Kind kind = Kind::Own;
    QString text;
};

const QRegularExpression& bulletMarker() {
    static const QRegularExpression pattern(u"^[•–][\u00A0 ]\\s*"_s);
    return pattern;
}

const QRegularExpression& numberMarker() {
    static const QRegularExpression pattern(u"^(\\d+\\.)[\u00A0 ]\\s*"_s);
    return pattern;
}

// The line with the marker of a Markdown list for the one it has; nothing if it has none.
std::optional<QString> listItem(QString line) {
    if (line.contains(bulletMarker())) return line.replace(bulletMarker(), u"- "_s);
    if (line.contains(numberMarker())) return line.replace(numberMarker(), u"\\1 "_s);
    return std::nullopt;
}

QString emphasised(const QString& text, const NoteFont& font) {
    const QStringView core = trimmed(text);
    const QString mark = (font.weight == NoteFontWeight::Bold ? u"**"_s : QString()) +
                         (font.isItalic ? u"*"_s : QString());
    if (core.isEmpty() || mark.isEmpty()) return text;
    const qsizetype start = core.utf16() - QStringView(text).utf16();
    return text.left(start) + mark + core.toString() + mark + text.mid(start + core.size());
}

QString withEmphasis(const NoteRichText& paragraph) {
    QString text;
    qsizetype start = 0;
    for (const NoteRichText::Run& run : paragraph.runs()) {
        text += emphasised(paragraph.text().mid(start, run.length), run.attributes.font);
        start += run.length;
    }
    return text;
}

Paragraph markdownOf(const NoteRichText& paragraph) {
    const Style style = paragraph.attributesAt(0).style.value_or(Style::Body);
    switch (style) {
    case Style::Title:
        return {Paragraph::Kind::Own, u'#' + (u' ' + paragraph.text())};
    case Style::Heading:
        return {Paragraph::Kind::Own, u"## "_s + paragraph.text()};
    case Style::Subheading:
        return {Paragraph::Kind::Own, u"### "_s + paragraph.text()};
    case Style::Mono:
        return {Paragraph::Kind::Code, paragraph.text()};
    case Style::BlockQuote:
        return {Paragraph::Kind::Quote, u"> "_s + withEmphasis(paragraph)};
    case Style::BulletedList:
    case Style::DashedList:
    case Style::NumberedList:
    case Style::Body:
        break;
    }
    const QString text = withEmphasis(paragraph);
    const std::optional<QString> item = listItem(text);
    if (!item) return {Paragraph::Kind::Own, text};
    return {item->startsWith(u'-') ? Paragraph::Kind::Bullet : Paragraph::Kind::Number, *item};
}

QString joined(const std::vector<Paragraph>& paragraphs) {
    QString text;
    const QString fence = u"```"_s;
    std::optional<Paragraph::Kind> before;
    for (const Paragraph& paragraph : paragraphs) {
        const bool isCode = paragraph.kind == Paragraph::Kind::Code;
        const bool continues = paragraph.kind != Paragraph::Kind::Own && before == paragraph.kind;
        if (before == Paragraph::Kind::Code && !isCode) text += fence + u'\n';
        if (before && !continues) text += u'\n';
        if (isCode && !continues) text += fence + u'\n';
        text += paragraph.text + u'\n';
        before = paragraph.kind;
    }
    if (before == Paragraph::Kind::Code) text += fence + u'\n';
    return text;
}

QString markdownOfDocument(const NoteRichText& document) {
    std::vector<Paragraph> paragraphs;
    for (const NoteRichText& paragraph : document.paragraphs()) {
        const bool isCode = !paragraph.isEmpty() && paragraph.attributesAt(0).style == Style::Mono;
        if (isCode || !trimmed(paragraph.text()).isEmpty())
            paragraphs.push_back(markdownOf(paragraph));
    }
    return joined(paragraphs);
}

QString markdownOfPlain(const QString& body) {
    QString text;
    for (const QStringView piece : splitAtNewlines(body)) {
        const QString line = piece.toString();
        const std::optional<QString> item = listItem(line);
        const bool isTitle = text.isEmpty() && !item;
        text += isTitle ? u"# "_s + line : item.value_or(line);
        text += u'\n';
    }
    return text;
}

// The rich form, if it has not been left behind by the plain one.
std::optional<NoteRichText> richForm(const SavedNote& note) {
    if (!note.thoughtsRTF) return std::nullopt;
    std::optional<NoteRichText> document = readRtf(*note.thoughtsRTF);
    if (!document || trimmed(document->text()) != trimmed(note.thoughts)) return std::nullopt;
    return document;
}

QString bodyMarkdown(const SavedNote& note) {
    const QString body = studySource(note);
    if (body.isEmpty()) return {};
    if (const auto document = richForm(note)) return markdownOfDocument(*document);
    return VorqNoteImport::needsMigration(body) ? body + u'\n' : markdownOfPlain(body);
}

QString withFlashcards(QString text, const SavedNote& note, const QString& heading) {
    if (note.flashcards.empty()) return text;
    if (!text.isEmpty()) text += u'\n';
    text += heading + u'\n';
    for (const Flashcard& card : note.flashcards)
        text += u"\n- "_s + card.front.simplified() + u"\n  → "_s + card.back.simplified() + u'\n';
    return text;
}

} // namespace

QString noteMarkdown(const SavedNote& note) {
    return withFlashcards(bodyMarkdown(note), note, u"## Flashcards"_s);
}

QString notePlainText(const SavedNote& note) {
    QString body = studySource(note);
    if (!body.isEmpty()) body += u'\n';
    return withFlashcards(body, note, u"Flashcards"_s);
}

} // namespace vorq
