#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QStringList>

namespace vorq {

/// Turns a growing reply into output that only ever gets longer: each finished block once, as
/// canonical Markdown. Takes time for what is new, not for the whole reply.
class ReplyPrinter {
  public:
    /// What to print now that so much of the reply is there: the blocks that stay as they are,
    /// whatever follows.
    [[nodiscard]] QByteArray grow(QStringView text);

    /// What remains to be printed of the finished reply, with the line end behind it.
    [[nodiscard]] QByteArray finish(QStringView reply);

    [[nodiscard]] bool hasPrinted() const { return !m_printed.isEmpty(); }

  private:
    QByteArray readLine(QStringView line);
    QByteArray readRevised(QStringView lines);
    [[nodiscard]] QStringView tail() const { return QStringView(m_lines).sliced(m_tail); }
    // The blocks of the reply from that one on.
    QByteArray print(qsizetype from, const QStringList& blocks);
    void dropSettled(qsizetype lineStart, const QList<QStringList>& grown);
    bool settleUpTo(qsizetype position, const QList<QStringList>& grown);

    QStringList m_printed;         // the canonical text of each block
    QSet<QString> m_printedBefore; // of what the backend has revised
    QString m_lines;               // the whole lines that have been read
    qsizetype m_lastLine = 0;
    // Blocks before the tail stay as they are, and what follows does not depend on them.
    qsizetype m_tail = 0;
    qsizetype m_blocksBeforeTail = 0;
    qsizetype m_parsed = 0; // code units of the tail when it was last parsed
    bool m_isInCode = false;
};

/// The text without what a terminal would obey, control characters and changes of direction, but
/// for line feeds and tabs.
[[nodiscard]] QByteArray withoutTerminalControls(const QByteArray& utf8);

} // namespace vorq
