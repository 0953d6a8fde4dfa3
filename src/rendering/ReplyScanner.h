#pragma once

#include "rendering/DenseParagraph.h"
#include "rendering/ReplyBreaks.h"
#include "rendering/ReplyLines.h"
#include "support/Text.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <span>
#include <vector>

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

    using Lines = std::vector<QStringView>;

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

    void readLine(QStringView line) {
        if (line.isEmpty()) {
            flush();
        } else if (replylines::opensOrClosesFence(line)) {
            readCode();
        } else if (startsTable(line)) {
            readTable(line);
        } else if (replylines::isDivider(line)) {
            flush();
            m_sink.divider();
        } else if (const auto heading = replylines::atxHeading(line)) {
            emitHeading(*heading);
        } else if (const auto label = replylines::boldLabel(line)) {
            emitLabel(line, *label);
        } else if (nextNonEmptyLineIsList() && replylines::looksLikeBareSectionHeading(line)) {
            emitHeading(line);
        } else {
            readParagraphOrItem(line);
        }
    }

    void readParagraphOrItem(QStringView line) {
        if (const auto quoted = replylines::quotedText(line)) {
            add(Open::Quote, *quoted);
        } else if (const auto bullet = replylines::bulletItem(line)) {
            add(replylines::isListBridge(*bullet) ? Open::Body : Open::Bullets, *bullet);
        } else if (const auto numbered = replylines::numberedItem(line)) {
            add(replylines::isListBridge(*numbered) ? Open::Body : Open::Numbered, *numbered);
        } else {
            add(Open::Body, line);
        }
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
        m_sink.table(header, std::span<const QStringView>(m_lines));
        m_lines.clear();
    }

    bool nextNonEmptyLineIsList() {
        const qsizetype here = m_next;
        QStringView line;
        while (m_next >= 0 && line.isEmpty())
            line = trimmedBlanks(takeLine());
        m_next = here;
        return replylines::isBulletMarked(line) || replylines::numberedItem(line);
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
        const std::span<const QStringView> lines(m_lines);
        switch (std::exchange(m_open, Open::Nothing)) {
        case Open::Nothing:
            return;
        case Open::Body:
            emitBody(joinedLines());
            break;
        case Open::Bullets:
            m_sink.bullets(lines);
            break;
        case Open::Numbered:
            m_sink.numbered(lines);
            break;
        case Open::Quote:
            if (const QStringView text = joinedLines(); !text.isEmpty()) m_sink.quote(text);
            break;
        }
        m_lines.clear();
    }

    void emitBody(QStringView text) {
        if (text.isEmpty()) return;
        if (text.size() < densestParagraph) return m_sink.body(text);
        for (const QStringView paragraph : splitDenseParagraph(text))
            m_sink.body(paragraph);
    }

    // The open lines joined with one blank and trimmed.
    QStringView joinedLines() {
        if (m_lines.size() == 1) return trimmed(m_lines.front());
        m_joined.clear();
        for (const QStringView line : m_lines) {
            if (&line != &m_lines.front()) m_joined.append(u' ');
            m_joined.append(line);
        }
        return trimmed(m_joined);
    }

    Sink& m_sink;
    QStringView m_text;
    qsizetype m_next = 0; // start of the next line, or -1 after the last
    Open m_open = Open::Nothing;
    Lines m_lines;
    QString m_joined;
    bool m_sawHeading = false;
};

} // namespace vorq
