#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace vorq {

/// Turns a growing reply into output that only ever gets longer: each finished block once, as
/// canonical Markdown.
class ReplyPrinter {
  public:
    /// What to print now that so much of the reply is there: the blocks that stay as they are,
    /// whatever follows.
    [[nodiscard]] QByteArray grow(QStringView text);

    /// What remains to be printed of the finished reply, with the line end behind it.
    [[nodiscard]] QByteArray finish(QStringView reply);

    [[nodiscard]] bool hasPrinted() const { return !m_printed.isEmpty(); }

  private:
    QByteArray print(const QStringList& blocks);

    QStringList m_printed; // the canonical text of each block
    qsizetype m_linesEnd = 0;
};

/// The text without what a terminal would obey, control characters and changes of direction, but
/// for line feeds and tabs.
[[nodiscard]] QByteArray withoutTerminalControls(const QByteArray& utf8);

} // namespace vorq
