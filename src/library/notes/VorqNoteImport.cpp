#include "library/notes/VorqNoteImport.h"

#include "library/records/NoteTitle.h"
#include "library/richtext/InlineBold.h"
#include "library/richtext/NoteTypography.h"
#include "library/rtf/RtfReader.h"
#include "library/rtf/RtfWriter.h"
#include "rendering/AssistantReplyDocument.h"
#include "support/text/Characters.h"
#include "support/text/Text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Block = AssistantReplyDocument::Block;

const NoteAttributes& bodyAttributes() {
    return NoteTypography::attributes(NoteTextStyle::Body);
}

void join(NoteRichText& document, const NoteRichText& paragraph) {
    if (paragraph.isEmpty()) return;
    if (!document.isEmpty()) document.append(u"\n", bodyAttributes());
    document.append(paragraph);
}

// Adds the text as it is, unless it is empty.
void joinText(NoteRichText& document, QStringView text, NoteTextStyle style,
              bool keepInlineMarkdown = false) {
    const NoteAttributes& attributes = NoteTypography::attributes(style);
    NoteRichText paragraph(text, attributes);
    if (!keepInlineMarkdown) VorqNoteImport::applyInlineBold(paragraph, attributes.font);
    join(document, paragraph);
}

void appendItems(NoteRichText& document, const Block& block) {
    const bool isNumbered = block.kind == AssistantReplyDocument::Kind::Numbered;
    const NoteTextStyle style =
        isNumbered ? NoteTextStyle::NumberedList : NoteTextStyle::BulletedList;
    qsizetype number = 0;
    for (const QString& item : block.items) {
        const QStringView text = trimmed(item);
        ++number;
        if (!isNumbered && text.isEmpty()) continue;
        joinText(document, NoteTypography::listPrefix(style, number).append(text), style);
    }
}

void appendCode(NoteRichText& document, QStringView code) {
    for (const QStringView line : code.split(u'\n'))
        joinText(document, line.isEmpty() ? u" " : line, NoteTextStyle::Mono, true);
}

// An empty one adds nothing.
void appendRow(NoteRichText& document, const QStringList& cells, NoteTextStyle style) {
    const bool isEmpty =
        std::ranges::all_of(cells, [](const QString& cell) { return trimmed(cell).isEmpty(); });
    if (isEmpty) return;
    VorqNoteImport::appendParagraph(cells.join(u" · "_s), style, 1, document);
}

void appendTable(NoteRichText& document, const Block& block) {
    appendRow(document, block.header, NoteTextStyle::Heading);
    for (const QStringList& row : block.rows)
        appendRow(document, row, NoteTextStyle::Body);
}

void appendBlock(NoteRichText& document, const Block& block) {
    using Kind = AssistantReplyDocument::Kind;
    switch (block.kind) {
    case Kind::Title:
        return joinText(document, trimmed(AssistantReplyDocument::inlinePlain(block.text)),
                        NoteTextStyle::Title);
    case Kind::Section:
        return joinText(document, trimmed(AssistantReplyDocument::inlinePlain(block.text)),
                        NoteTextStyle::Heading);
    case Kind::Body:
        return joinText(document, trimmed(block.text), NoteTextStyle::Body);
    case Kind::Bullets:
    case Kind::Numbered:
        return appendItems(document, block);
    case Kind::Quote:
        return joinText(document, trimmed(block.text), NoteTextStyle::BlockQuote);
    case Kind::Code:
        return appendCode(document, block.text);
    case Kind::Table:
        return appendTable(document, block);
    case Kind::Divider:
        return;
    }
}

VorqNoteImport::Payload payloadOf(const NoteRichText& document) {
    return {.title = VorqNoteImport::titleFrom(document.text()),
            .plain = document.text(),
            .rtf = VorqNoteImport::rtfData(document)};
}

// What the note holds so far, as rich text.
NoteRichText baseDocument(QStringView existingPlain, const NoteRichText& decoded) {
    if (VorqNoteImport::needsMigration(trimmed(existingPlain)))
        return VorqNoteImport::attributedDocument(existingPlain);
    if (VorqNoteImport::needsMigration(decoded.text()))
        return VorqNoteImport::attributedDocument(decoded.text());
    if (!decoded.isEmpty()) return decoded;
    return NoteTypography::document(existingPlain);
}

// Without digits of any script, the point after them and the white space after that.
QStringView withoutLeadingNumber(QStringView text) {
    qsizetype end = 0;
    while (end < text.size()) {
        const bool isPair =
            text[end].isHighSurrogate() && end + 1 < text.size() && text[end + 1].isLowSurrogate();
        const char32_t codePoint = isPair ? QChar::surrogateToUcs4(text[end], text[end + 1])
                                          : char32_t{text[end].unicode()};
        if (QChar::category(codePoint) != QChar::Number_DecimalDigit) break;
        end += isPair ? 2 : 1;
    }
    if (end == 0 || end == text.size() || text[end] != u'.') return text;
    ++end;
    while (end < text.size() && isWhitespaceOrNewline(text[end].unicode()))
        ++end;
    return text.sliced(end);
}

} // namespace

std::optional<VorqNoteImport::Payload> VorqNoteImport::structure(QStringView reply) {
    const QStringView text = trimmed(reply);
    if (text.isEmpty()) return std::nullopt;
    const NoteRichText document = attributedDocument(text);
    if (document.isEmpty()) return std::nullopt;
    return payloadOf(document);
}

std::optional<VorqNoteImport::Payload>
VorqNoteImport::append(QStringView reply, QStringView existingPlain,
                       const std::optional<QByteArray>& existingRtf) {
    std::optional<Payload> alone = structure(reply);
    if (!alone) return std::nullopt;
    const NoteRichText decoded =
        existingRtf ? readRtf(*existingRtf).value_or(NoteRichText()) : NoteRichText();
    if (trimmed(existingPlain).isEmpty() && trimmed(decoded.text()).isEmpty()) return alone;

    NoteRichText merged = baseDocument(existingPlain, decoded);
    if (!merged.isEmpty()) {
        if (!merged.text().endsWith(u'\n')) merged.append(u"\n", bodyAttributes());
        merged.append(u"\n", bodyAttributes());
    }
    merged.append(attributedDocument(reply));
    return payloadOf(merged);
}

bool VorqNoteImport::needsMigration(QStringView text) {
    const QStringView plain = trimmed(text);
    return containsCharacters(plain, u"**") || containsCharacters(plain, u"```") ||
           startsWithCharacters(plain, u"---") || containsCharacters(plain, u"\n---") ||
           startsWithCharacters(plain, u"## ") || containsCharacters(plain, u"\n## ") ||
           startsWithCharacters(plain, u"# ");
}

NoteRichText VorqNoteImport::attributedDocument(QStringView reply) {
    NoteRichText document;
    for (const Block& block : AssistantReplyDocument::blocks(reply))
        appendBlock(document, block);
    return document.isEmpty() ? NoteTypography::document(reply) : document;
}

QString VorqNoteImport::titleFrom(QStringView plain) {
    const QString line = AssistantReplyDocument::inlinePlain(firstLine(plain));
    const QStringView title = withoutLeadingNumber(withoutLeadingBullets(trimmed(line)));
    if (title.isEmpty()) return u"New Note"_s;
    return shortened(title, longestNoteTitle);
}

std::optional<QByteArray> VorqNoteImport::rtfData(const NoteRichText& document) {
    if (document.isEmpty()) return std::nullopt;
    return writeRtf(document);
}

void VorqNoteImport::appendParagraph(QStringView text, NoteTextStyle style, qsizetype listIndex,
                                     NoteRichText& document, bool keepInlineMarkdown) {
    const QStringView plain = trimmed(text);
    if (plain.isEmpty()) return;
    joinText(document, NoteTypography::listPrefix(style, listIndex).append(plain), style,
             keepInlineMarkdown);
}

void VorqNoteImport::applyInlineBold(NoteRichText& paragraph, const NoteFont& font) {
    const std::vector<InlineBoldSpan> spans = inlineBoldSpans(paragraph.text());
    if (spans.empty()) return;
    const NoteFont bold = NoteTypography::fontByTogglingBold(font, true);
    NoteRichText result;
    NoteRichText rest = std::move(paragraph);
    qsizetype taken = 0;
    // One pass over the runs for each piece is enough: a paragraph that is built from a reply has
    // one run.
    for (const InlineBoldSpan& span : spans) {
        result.append(rest.sliced(taken, span.start - taken));
        NoteRichText inner = rest.sliced(span.textStart(), span.length);
        inner.change(0, inner.length(),
                     [&](NoteAttributes& attributes) { attributes.font = bold; });
        result.append(inner);
        taken = span.end();
    }
    result.append(rest.sliced(taken, rest.length() - taken));
    paragraph = std::move(result);
}

} // namespace vorq
