#pragma once

#include "rendering/AssistantReplyDocument.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace vorq {

/// Turns a growing reply into output that only ever gets longer: each finished block once, as
/// canonical Markdown.
class ReplyPrinter {
  public:
    /// What to print for a reply that shows so much now. A last block that may still grow waits.
    [[nodiscard]] QByteArray grow(QStringView shown, bool lastBlockMayGrow);

    /// What remains to be printed of the finished reply, with the line end behind it.
    [[nodiscard]] QByteArray finish(QStringView reply);

    [[nodiscard]] bool hasPrinted() const { return !m_printed.isEmpty(); }

  private:
    QByteArray print(const QList<AssistantReplyDocument::Block>& blocks);

    QStringList m_printed; // the canonical text of each block
};

/// The text without control characters that a terminal would obey, but for line feeds and tabs.
[[nodiscard]] QByteArray withoutTerminalControls(const QByteArray& utf8);

} // namespace vorq
