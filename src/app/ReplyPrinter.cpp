#include "app/ReplyPrinter.h"

#include <algorithm>

namespace vorq {

QByteArray ReplyPrinter::grow(QStringView shown, bool lastBlockMayGrow) {
    QList<AssistantReplyDocument::Block> blocks = AssistantReplyDocument::blocks(shown);
    if (lastBlockMayGrow && !blocks.isEmpty()) blocks.removeLast();
    return print(blocks);
}

QByteArray ReplyPrinter::finish(QStringView reply) {
    QByteArray bytes = print(AssistantReplyDocument::blocks(reply));
    if (hasPrinted()) bytes += '\n';
    return bytes;
}

// A backend may revise what it said; then what is new follows, since nothing printed can be taken
// back.
QByteArray ReplyPrinter::print(const QList<AssistantReplyDocument::Block>& blocks) {
    QStringList sources;
    for (const AssistantReplyDocument::Block& block : blocks) {
        const QString source = AssistantReplyDocument::source({&block, 1});
        if (!source.isEmpty()) sources += source;
    }
    const auto [printed, next] = std::ranges::mismatch(m_printed, sources);
    QStringList fresh(next, sources.end());
    if (printed != m_printed.end())
        fresh.removeIf([this](const QString& source) { return m_printed.contains(source); });
    if (fresh.isEmpty()) return {};
    const QString blankLine = QStringLiteral("\n\n");
    const QString separator = hasPrinted() ? blankLine : QString();
    m_printed = std::move(sources);
    return (separator + fresh.join(blankLine)).toUtf8();
}

QByteArray withoutTerminalControls(const QByteArray& utf8) {
    QString kept;
    for (const QChar character : QString::fromUtf8(utf8)) {
        const bool isHarmless = character == u'\n' || character == u'\t';
        if (isHarmless || character.category() != QChar::Other_Control) kept += character;
    }
    return kept.toUtf8();
}

} // namespace vorq
