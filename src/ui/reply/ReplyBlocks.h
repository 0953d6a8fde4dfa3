#pragma once

#include "rendering/AssistantReplyDocument.h"

namespace vorq {

/// The blocks of one reply, which tell exactly what changes as the reply grows. Main thread only.
class ReplyBlocks {
  public:
    using Block = AssistantReplyDocument::Block;

    /// So many blocks from a row on gave way to so many others.
    struct Change {
        int row = 0;
        int removed = 0;
        int added = 0;

        bool operator==(const Change&) const = default;
    };

    [[nodiscard]] const QString& raw() const { return m_raw; }
    [[nodiscard]] const QList<Block>& blocks() const { return m_blocks; }

    Change setRaw(const QString& raw);

  private:
    QString m_raw;
    QList<Block> m_blocks;
};

} // namespace vorq
