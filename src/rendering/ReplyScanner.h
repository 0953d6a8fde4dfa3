#pragma once

#include "rendering/DenseParagraph.h"
#include "rendering/ReplyBreaks.h"
#include "rendering/ReplyLines.h"
#include "support/text/Text.h"

#include <QString>
#include <QStringView>
#include <QVarLengthArray>

#include <optional>
#include <span>
#include <string>
#include <utility>

namespace vorq {

/// Reads a reply line by line and tells a sink each block, in order, as views that live until the
/// call returns:
///   heading(bool isFirst, text), body(text), bullets(items), numbered(items), quote(text),
///   code(text), table(headerLine, rowLines), divider()
template<typename Sink>
class ReplyScanner {
  public:
    explicit ReplyScanner(Sink& sink) : m_sink(sink) {}

    void scan(QStringView raw) {
        QString storage;
        m_text = replybreaks::mended(raw, storage);
        m_next = 0;
        while (m_next >= 0)
            readLine(trimmedBlanks(takeLine()));
        flush();
    }

  private:
    // At most one kind of lines is open at a time: each rule that adds to one flushes the others.
    enum class Open { Nothing, Body, Bullets, Numbered, Quote };

    using Lines = QVarLengthArray<QStringView, 32>;

    QStringView takeLine() {
        const qsizetype start = m_next;
        const qsizetype end = replybreaks::lineFeed(m_text, start);
        m_next = end < 0 ? -1 : end + 1;
        return m_text.sliced(start, (end < 0 ? m_text.size() : end) - start);
    }

    QStringView peekTrimmedLine() {
        const qsizetype here = m_next;
        const QStringView line = trimmedBlanks(takeLine());
        m_next = here;
        return line;
    }

    // Each rule up to the bare heading needs one first character.
    void readLine(QStringView line) {
        if (line.isEmpty()) return flush();
        switch (line.front().unicode()) {
        case u'`':
            if (replylines::opensOrClosesFence(line)) return readCode();
            break;
        case u'|':
            if (startsTable(line)) return readTable(line);
            break;
        case u'-':
        case u'_':
        case u'*':
            if (replylines::isDivider(line)) return emitDivider();
            if (const auto label = replylines::boldLabel(line)) return emitLabel(line, *label);
            break;
        case u'#':
            if (const auto heading = replylines::atxHeading(line)) return emitHeading(*heading);
            break;
        default:
            break;
        }
        if (replylines::mayBeginBareHeading(line.front()) && nextNonEmptyLineIsList() &&
            replylines::looksLikeBareSectionHeading(line))
            return emitHeading(line);
        readParagraphOrItem(line);
    }

    void readParagraphOrItem(QStringView line) {
        if (const auto quoted = replylines::quotedText(line)) return add(Open::Quote, *quoted);
        if (replylines::mayBeginItem(line.front())) {
            if (const auto bullet = replylines::bulletItem(line))
                return addItem(Open::Bullets, *bullet);
            if (const auto numbered = replylines::numberedItem(line))
                return addItem(Open::Numbered, *numbered);
        }
        add(Open::Body, line);
    }

    // A lead-in to a list loses its marker.
    void addItem(Open kind, QStringView item) {
        add(replylines::isListBridge(item) ? Open::Body : kind, item);
    }

    void readCode() {
        flush();
        const qsizetype start = m_next < 0 ? m_text.size() : m_next;
        qsizetype end = m_text.size();
        while (m_next >= 0) {
            const qsizetype lineStart = m_next;
            if (!replylines::opensOrClosesFence(trimmedBlanks(takeLine()))) continue;
            end = lineStart;
            break;
        }
        const QStringView code = trimmed(m_text.sliced(start, end - start));
        if (!code.isEmpty()) m_sink.code(code);
    }

    bool startsTable(QStringView line) {
        return m_next >= 0 && replylines::isTableRow(line) &&
               replylines::isTableSeparator(peekTrimmedLine());
    }

    void readTable(QStringView header) {
        flush();
        takeLine();
        while (m_next >= 0) {
            const QStringView row = peekTrimmedLine();
            if (!replylines::isTableRow(row)) break;
            m_lines.push_back(row);
            takeLine();
        }
        m_sink.table(header, lines());
        m_lines.clear();
    }

    bool nextNonEmptyLineIsList() const {
        if (m_next < 0) return false;
        qsizetype start = m_next;
        while (start < m_text.size() &&
               (m_text[start] == u'\n' || isBlank(m_text[start].unicode())))
            ++start;
        if (start == m_text.size() || !replylines::mayBeginItem(m_text[start])) return false;
        const qsizetype end = replybreaks::lineFeed(m_text, start);
        const QStringView line = m_text.sliced(start, (end < 0 ? m_text.size() : end) - start);
        const QStringView item = trimmedBlanks(line);
        return replylines::isBulletMarked(item) || replylines::numberedItem(item);
    }

    void emitDivider() {
        flush();
        m_sink.divider();
    }

    void emitHeading(QStringView text) {
        flush();
        m_sink.heading(!m_sawHeading, text);
        m_sawHeading = true;
    }

    void emitLabel(QStringView line, QStringView label) {
        if (label.isEmpty()) return emitHeading(label);
        if (label.end() != line.end()) return emitHeading(line);
        const QString closed = line.toString().append(replylines::boldMarker);
        emitHeading(closed);
    }

    void add(Open kind, QStringView line) {
        if (m_open != kind) flush();
        m_open = kind;
        m_lines.push_back(line);
    }

    void flush() {
        switch (std::exchange(m_open, Open::Nothing)) {
        case Open::Nothing:
            return;
        case Open::Body:
            emitBody(joinedLines());
            break;
        case Open::Bullets:
            m_sink.bullets(lines());
            break;
        case Open::Numbered:
            m_sink.numbered(lines());
            break;
        case Open::Quote:
            if (const QStringView text = joinedLines(); !text.isEmpty()) m_sink.quote(text);
            break;
        }
        m_lines.clear();
    }

    std::span<const QStringView> lines() const {
        return {m_lines.data(), static_cast<std::size_t>(m_lines.size())};
    }

    void emitBody(QStringView text) {
        DenseParagraphs paragraphs(text);
        while (const auto paragraph = paragraphs.next())
            m_sink.body(*paragraph);
    }

    // The open lines joined with one blank and trimmed.
    QStringView joinedLines() {
        if (m_lines.size() == 1) return trimmed(m_lines.front());
        m_joined.clear();
        for (const QStringView line : m_lines) {
            if (&line != &m_lines.front()) m_joined.push_back(u' ');
            m_joined.append(line.utf16(), static_cast<std::size_t>(line.size()));
        }
        return trimmed(m_joined);
    }

    Sink& m_sink;
    QStringView m_text;
    qsizetype m_next = 0; // start of the next line, or -1 after the last
    Open m_open = Open::Nothing;
    Lines m_lines;
    std::u16string m_joined;
    bool m_sawHeading = false;
};

} // namespace vorq
