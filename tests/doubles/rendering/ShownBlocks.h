#pragma once

#include "rendering/AssistantReplyDocument.h"

#include <ostream>
#include <string>
#include <vector>

namespace vorq {

/// Blocks in short form for tests: "title: Plan", "bullets: one|two", "table: a|b / 1|2",
/// "divider".
using Shown = std::vector<std::string>;

inline std::string shownBlock(const AssistantReplyDocument::Block& block) {
    using Kind = AssistantReplyDocument::Kind;
    const QString kind = AssistantReplyDocument::kindName(block.kind);
    QStringList rows(block.header.join(u'|'));
    for (const QStringList& row : block.rows)
        rows.append(row.join(u'|'));
    QString content = block.text + block.items.join(u'|');
    if (block.kind == Kind::Table) content += rows.join(QStringLiteral(" / "));
    if (block.kind == Kind::Divider && content.isEmpty()) return kind.toStdString();
    return (kind + QStringLiteral(": ") + content).toStdString();
}

inline Shown shownBlocks(QStringView text) {
    Shown shown;
    for (const AssistantReplyDocument::Block& block : AssistantReplyDocument::blocks(text))
        shown.push_back(shownBlock(block));
    return shown;
}

inline QString repeated(QStringView text, int count) {
    return text.toString().repeated(count);
}

} // namespace vorq
