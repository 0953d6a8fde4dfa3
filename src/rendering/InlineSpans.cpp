#include "rendering/InlineSpans.h"

#include "rendering/InlineEntities.h"

#include <md4c.h>

namespace vorq {
namespace {

// The parser knows blocks too. A punctuation mark at either end makes any line one paragraph, keeps
// its outer white space, and leaves the marks beside it free to open and close.
constexpr QChar guard = u'‡';
constexpr unsigned parserFlags = MD_FLAG_NOHTMLSPANS | MD_FLAG_NOHTMLBLOCKS |
                                 MD_FLAG_NOINDENTEDCODEBLOCKS | MD_FLAG_STRIKETHROUGH;

bool hasMarks(QStringView text) {
    constexpr QStringView marks = u"*_`[]!<&\\~";
    for (const QChar character : text)
        if (marks.contains(character)) return true;
    return false;
}

class Collector {
  public:
    static int enter(MD_SPANTYPE type, void* detail, void* self) {
        return static_cast<Collector*>(self)->nest(type, detail, 1);
    }
    static int leave(MD_SPANTYPE type, void* detail, void* self) {
        return static_cast<Collector*>(self)->nest(type, detail, -1);
    }
    static int text(MD_TEXTTYPE type, const MD_CHAR* bytes, MD_SIZE size, void* self) {
        static_cast<Collector*>(self)->add(type, QString::fromUtf8(bytes, size));
        return 0;
    }
    static int ignoreBlock(MD_BLOCKTYPE, void*, void*) { return 0; }

    /// The text with the guards still around it.
    InlineSpans& result() { return m_result; }

  private:
    int nest(MD_SPANTYPE type, void* detail, int step) {
        if (type == MD_SPAN_STRONG) m_strong += step;
        if (type == MD_SPAN_EM) m_emphasis += step;
        if (type == MD_SPAN_CODE) m_code += step;
        if (type == MD_SPAN_DEL) m_struck += step;
        if (type == MD_SPAN_A && step > 0)
            m_link = address(*static_cast<MD_SPAN_A_DETAIL*>(detail));
        if (type == MD_SPAN_A && step < 0) m_link.clear();
        return 0;
    }

    static QString address(const MD_SPAN_A_DETAIL& detail) {
        return decodedEntities(QString::fromUtf8(detail.href.text, detail.href.size));
    }

    void add(MD_TEXTTYPE type, QString piece) {
        if (type == MD_TEXT_NULLCHAR) piece = QChar(QChar::ReplacementCharacter);
        if (type == MD_TEXT_ENTITY) piece = decodedEntities(piece);
        if (type == MD_TEXT_BR || type == MD_TEXT_SOFTBR) piece = QChar(QChar::LineSeparator);
        InlineSpans::Span span;
        span.start = m_result.text.size();
        span.length = piece.size();
        span.isStrong = m_strong > 0;
        span.isEmphasized = m_emphasis > 0;
        span.isCode = m_code > 0;
        span.isStruck = m_struck > 0;
        span.link = m_link;
        m_result.text += piece;
        if (span.isStrong || span.isEmphasized || span.isCode || span.isStruck ||
            !span.link.isEmpty())
            keep(span);
    }

    // One run comes in pieces; they become one span again.
    void keep(const InlineSpans::Span& span) {
        if (!m_result.spans.isEmpty()) {
            InlineSpans::Span grown = m_result.spans.last();
            if (grown.start + grown.length == span.start) {
                grown.length = span.length;
                grown.start = span.start;
                if (grown == span) {
                    m_result.spans.last().length += span.length;
                    return;
                }
            }
        }
        m_result.spans += span;
    }

    InlineSpans m_result;
    int m_strong = 0;
    int m_emphasis = 0;
    int m_code = 0;
    int m_struck = 0;
    QString m_link;
};

// Nothing is lost whatever happens: without the guards around it the parse is not trusted.
InlineSpans unguarded(InlineSpans parsed, const QString& asTyped) {
    if (parsed.text.size() < 2 || parsed.text.front() != guard || parsed.text.back() != guard)
        return {asTyped, {}};
    parsed.text = parsed.text.mid(1, parsed.text.size() - 2);
    for (InlineSpans::Span& span : parsed.spans)
        span.start -= 1;
    return parsed;
}

} // namespace

InlineSpans InlineSpans::parse(QStringView source) {
    QString line = source.toString();
    line.replace(u'\n', QChar(QChar::LineSeparator));
    if (!hasMarks(line)) return {line, {}};
    Collector collector;
    MD_PARSER parser{};
    parser.flags = parserFlags;
    parser.enter_block = Collector::ignoreBlock;
    parser.leave_block = Collector::ignoreBlock;
    parser.enter_span = Collector::enter;
    parser.leave_span = Collector::leave;
    parser.text = Collector::text;
    const QByteArray bytes = (guard + line + guard).toUtf8();
    const bool isParsed =
        md_parse(bytes.constData(), static_cast<MD_SIZE>(bytes.size()), &parser, &collector) == 0;
    if (!isParsed) return {line, {}};
    return unguarded(std::move(collector.result()), line);
}

} // namespace vorq
