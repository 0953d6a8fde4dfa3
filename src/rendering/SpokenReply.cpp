#include "rendering/SpokenReply.h"

#include "rendering/AssistantReplyDocument.h"
#include "rendering/InlineSpans.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Block = AssistantReplyDocument::Block;
using Kind = AssistantReplyDocument::Kind;

QString spokenLine(const QString& text) {
    return InlineSpans::parse(text).text;
}

QStringList spokenItems(const Block& block) {
    QStringList lines;
    for (qsizetype i = 0; i < block.items.size(); ++i) {
        const QString marker =
            block.kind == Kind::Numbered ? QString::number(i + 1) + u'.' : u"•"_s;
        lines += marker + u' ' + spokenLine(block.items[i]);
    }
    return lines;
}

QString spokenRow(const QStringList& cells) {
    QStringList spoken;
    for (const QString& cell : cells)
        spoken += spokenLine(cell);
    return spoken.join(u", "_s);
}

QStringList spokenBlock(const Block& block) {
    switch (block.kind) {
    case Kind::Title:
    case Kind::Section:
        return {spokenLine(AssistantReplyDocument::inlinePlain(block.text))};
    case Kind::Body:
    case Kind::Quote:
        return {spokenLine(block.text)};
    case Kind::Bullets:
    case Kind::Numbered:
        return spokenItems(block);
    case Kind::Code:
        return {block.text};
    case Kind::Table: {
        QStringList lines{spokenRow(block.header)};
        for (const QStringList& row : block.rows)
            lines += spokenRow(row);
        return lines;
    }
    case Kind::Divider:
        break;
    }
    return {};
}

} // namespace

QString spokenReply(QStringView reply) {
    QStringList lines;
    for (const Block& block : AssistantReplyDocument::blocks(reply))
        lines += spokenBlock(block);
    return lines.join(u'\n');
}

} // namespace vorq
