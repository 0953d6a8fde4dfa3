#include "app/ReplyPrinter.h"

#include "rendering/AssistantReplyDocument.h"

#include <algorithm>
#include <utility>

namespace vorq {
namespace {

// The canonical text of each block.
QStringList blockSources(QStringView text) {
    QStringList sources;
    for (const AssistantReplyDocument::Block& block : AssistantReplyDocument::blocks(text)) {
        const QString source = AssistantReplyDocument::source({&block, 1});
        if (!source.isEmpty()) sources += source;
    }
    return sources;
}

void keepCommonStart(QStringList& blocks, const QStringList& others) {
    const auto [end, _] = std::ranges::mismatch(blocks, others);
    blocks.erase(end, blocks.end());
}

// The blocks of whole lines that no further line changes: those on which one line of each kind that
// joins what stands before it agrees.
QStringList settledBlocks(QStringView lines) {
    QStringList settled = blockSources(lines.toString() + u'x');
    for (const QStringView next : {u"- x", u"1. x", u"> x", u"```", u"|x|x|\n|-|-|"})
        keepCommonStart(settled, blockSources(lines.toString() + next.toString()));
    return settled;
}

} // namespace

QByteArray ReplyPrinter::grow(QStringView text) {
    const qsizetype linesEnd = text.lastIndexOf(u'\n') + 1;
    if (linesEnd == std::exchange(m_linesEnd, linesEnd)) return {};
    return print(settledBlocks(text.first(linesEnd)));
}

QByteArray ReplyPrinter::finish(QStringView reply) {
    QByteArray bytes = print(blockSources(reply));
    if (hasPrinted()) bytes += '\n';
    return bytes;
}

// A backend may revise what it said; then what is new follows, since nothing printed can be taken
// back.
QByteArray ReplyPrinter::print(const QStringList& blocks) {
    const auto [printed, next] = std::ranges::mismatch(m_printed, blocks);
    QStringList fresh(next, blocks.end());
    if (printed != m_printed.end())
        fresh.removeIf([this](const QString& block) { return m_printed.contains(block); });
    if (fresh.isEmpty()) return {};
    const QString blankLine = QStringLiteral("\n\n");
    const QString separator = hasPrinted() ? blankLine : QString();
    m_printed = blocks;
    return (separator + fresh.join(blankLine)).toUtf8();
}

// Marks that make a terminal show a text in another order than it has.
static bool turnsDirection(QChar character) {
    return (character >= QChar(0x202A) && character <= QChar(0x202E)) ||
           (character >= QChar(0x2066) && character <= QChar(0x2069));
}

QByteArray withoutTerminalControls(const QByteArray& utf8) {
    QString kept;
    for (const QChar character : QString::fromUtf8(utf8)) {
        const bool isHarmless = character == u'\n' || character == u'\t';
        const bool isControl = character.category() == QChar::Other_Control;
        if (isHarmless || (!isControl && !turnsDirection(character))) kept += character;
    }
    return kept.toUtf8();
}

} // namespace vorq
