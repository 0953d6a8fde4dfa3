#pragma once

#include "rendering/ReplyLines.h"

#include <QString>
#include <QStringView>

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace vorq {

/// Writes blocks as canonical Markdown, one after the other, with an empty line between them. Also
/// a sink of ReplyScanner.
class SourceWriter {
  public:
    /// Room for that many code units is made ahead.
    explicit SourceWriter(qsizetype expectedSize) { reserve(expectedSize); }

    [[nodiscard]] qsizetype blockCount() const { return m_blockCount; }
    [[nodiscard]] QString source() && { return taken(m_size); }

    /// The source of all blocks but the last.
    [[nodiscard]] QString sourceBeforeLastBlock() && { return taken(m_lastBlockStart); }

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
            append(lead);
            appendNumber(++number);
            append(u". ", item);
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
        m_lastBlockStart = m_size;
    }

    [[nodiscard]] QStringView separator() const {
        return m_size == 0 ? QStringView() : QStringView(u"\n\n");
    }

    void separate() { append(separator()); }

    template<typename... Pieces>
    void append(const Pieces&... pieces) {
        (appendPiece(QStringView(pieces)), ...);
    }

    void appendPiece(QStringView piece) {
        if (m_size + piece.size() > m_room) reserve(2 * m_room + piece.size());
        std::copy_n(piece.utf16(), piece.size(), m_units + m_size);
        m_size += piece.size();
    }

    void appendNumber(qsizetype number) {
        std::array<char16_t, 20> digits{};
        std::size_t first = digits.size();
        for (; number > 0; number /= 10)
            digits[--first] = static_cast<char16_t>(u'0' + number % 10);
        appendPiece({digits.data() + first, digits.data() + digits.size()});
    }

    void reserve(qsizetype room) {
        m_source.resize(room);
        m_units = reinterpret_cast<char16_t*>(m_source.data());
        m_room = room;
    }

    QString taken(qsizetype size) {
        m_source.truncate(size);
        return std::move(m_source);
    }

    // The written part of m_source, which is kept larger, since its own appending is a call for
    // each piece.
    qsizetype m_size = 0;
    qsizetype m_room = 0;
    char16_t* m_units = nullptr;
    QString m_source;
    qsizetype m_blockCount = 0;
    qsizetype m_lastBlockStart = 0;
};

} // namespace vorq
