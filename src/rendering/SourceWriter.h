#pragma once

#include "rendering/ReplyLines.h"

#include <QString>
#include <QStringView>

#include <span>

namespace vorq {

/// Writes blocks as canonical Markdown, one after the other, with an empty line between them. Also
/// a sink of ReplyScanner.
class SourceWriter {
  public:
    /// Room for that many code units is made ahead.
    explicit SourceWriter(qsizetype expectedSize) { m_source.reserve(expectedSize); }

    [[nodiscard]] qsizetype blockCount() const { return m_blockCount; }
    [[nodiscard]] QString source() && { return std::move(m_source); }

    /// The source of all blocks but the last.
    [[nodiscard]] QString sourceBeforeLastBlock() && {
        m_source.truncate(m_lastBlockStart);
        return std::move(m_source);
    }

    void heading(bool /*isFirst*/, QStringView text) {
        startBlock();
        const QStringView plain = replylines::withoutOuterBold(text);
        if (plain.isEmpty()) return;
        separate();
        append(replylines::boldMarker, plain, replylines::boldMarker);
    }

    void body(QStringView text) {
        startBlock();
        if (text.isEmpty()) return;
        separate();
        append(text);
    }

    template<typename Items>
    void bullets(const Items& items) {
        startBlock();
        QStringView lead = separator();
        for (const QStringView item : items) {
            append(lead, u"- ", item);
            lead = u"\n";
        }
    }

    template<typename Items>
    void numbered(const Items& items) {
        startBlock();
        QStringView lead = separator();
        qsizetype number = 0;
        for (const QStringView item : items) {
            append(lead, QString::number(++number), u". ", item);
            lead = u"\n";
        }
    }

    void quote(QStringView text) {
        startBlock();
        separate();
        append(u"> ", text);
    }

    void code(QStringView text) {
        startBlock();
        separate();
        append(u"```\n", text, u"\n```");
    }

    /// A table as the scanner sees it: lines whose cells are still to be split.
    void table(QStringView header, std::span<const QStringView> rows) {
        writeTable([header](auto visit) { replylines::forEachTableCell(header, visit); }, rows,
                   [](QStringView row, auto visit) { replylines::forEachTableCell(row, visit); });
    }

    template<typename Cells, typename Rows>
    void cells(const Cells& header, const Rows& rows) {
        const auto visitCells = [](const Cells& row, auto visit) {
            for (const QStringView cell : row)
                visit(cell);
        };
        writeTable([&](auto visit) { visitCells(header, visit); }, rows, visitCells);
    }

    void divider() {
        startBlock();
        separate();
        append(u"---");
    }

  private:
    template<typename ForEachHeaderCell, typename Rows, typename ForEachCell>
    void writeTable(ForEachHeaderCell forEachHeaderCell, const Rows& rows,
                    ForEachCell forEachCell) {
        startBlock();
        separate();
        writeRow([&](auto visit) { forEachHeaderCell(visit); });
        append(u"\n");
        writeRow([&](auto visit) { forEachHeaderCell([&visit](QStringView) { visit(u"---"); }); });
        for (const auto& row : rows) {
            append(u"\n");
            writeRow([&](auto visit) { forEachCell(row, visit); });
        }
    }

    template<typename ForEachCell>
    void writeRow(ForEachCell forEachCell) {
        QStringView lead = u"| ";
        forEachCell([&](QStringView cell) {
            append(lead, cell);
            lead = u" | ";
        });
        append(lead == u"| " ? QStringView(u"|  |") : QStringView(u" |"));
    }

    void startBlock() {
        ++m_blockCount;
        m_lastBlockStart = m_source.size();
    }

    [[nodiscard]] QStringView separator() const {
        return m_source.isEmpty() ? QStringView() : QStringView(u"\n\n");
    }

    void separate() { append(separator()); }

    template<typename... Pieces>
    void append(const Pieces&... pieces) {
        (m_source.append(QStringView(pieces)), ...);
    }

    QString m_source;
    qsizetype m_blockCount = 0;
    qsizetype m_lastBlockStart = 0;
};

} // namespace vorq
