#include "app/cli/ReplyPrinter.h"

#include "rendering/AssistantReplyDocument.h"
#include "rendering/ReplyLines.h"
#include "support/text/Text.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Document = AssistantReplyDocument;

// One line of each kind that joins what stands before it.
constexpr auto joiningLines =
    std::to_array<QStringView>({u"x", u"- x", u"1. x", u"> x", u"```", u"|x|x|\n|-|-|"});

QStringList sourcesOf(QStringView text) {
    QStringList sources;
    for (const Document::Block& block : Document::blocks(text)) {
        const QString source = Document::source({&block, 1});
        if (!source.isEmpty()) sources += source;
    }
    return sources;
}

constexpr qsizetype shortTail = 1024; // code units that are parsed at each line

// A text of one line reads otherwise on its own than as a part of a reply. A divider before it
// makes it a part and changes nothing else.
constexpr QStringView divider = u"---\n";

QList<Document::Block> blocksWithin(QStringView part) {
    return Document::blocks(divider.toString() + part.toString()).sliced(1);
}

QStringList sourcesWithin(QStringView part) {
    return sourcesOf(divider.toString() + part.toString()).sliced(1);
}

// What the lines read as with each of the joining lines behind them.
QList<QStringList> grownSources(QStringView lines) {
    QList<QStringList> grown;
    for (const QStringView next : joiningLines)
        grown += sourcesWithin(lines.toString() + next.toString());
    return grown;
}

// The blocks that no joining line changes.
QStringList settledBlocks(const QList<QStringList>& grown) {
    QStringList settled = grown.front();
    for (const QStringList& others : grown.sliced(1)) {
        const auto [end, _] = std::ranges::mismatch(settled, others);
        settled.erase(end, settled.end());
    }
    return settled;
}

bool isConcatenation(const QStringList& whole, const QStringList& front, const QStringList& back) {
    return whole.size() == front.size() + back.size() &&
           std::ranges::equal(whole.first(front.size()), front) &&
           std::ranges::equal(whole.sliced(front.size()), back);
}

// Whether the line is a block, or none, whatever follows it.
bool standsAlone(QStringView line) {
    const QStringList own = sourcesWithin(line);
    return std::ranges::all_of(joiningLines, [&](QStringView next) {
        return isConcatenation(sourcesWithin(line.toString() + next.toString()), own,
                               sourcesWithin(next));
    });
}

bool isBlankLine(QStringView line) {
    return trimmed(line).isEmpty();
}

bool mayBeRow(QStringView line) {
    return trimmedBlanks(line).startsWith(u'|');
}

// Whether a block may end between the two lines.
bool mayPart(QStringView before, QStringView line) {
    if (isBlankLine(before) || mayBeRow(before) != mayBeRow(line)) return true;
    const QList<Document::Block> blocks = blocksWithin(before.toString() + line.toString());
    // A long paragraph reads as several.
    const auto isBody = [](const Document::Block& block) {
        return block.kind == Document::Kind::Body;
    };
    if (blocks.size() == 1) return blocks.front().kind == Document::Kind::Table;
    return !std::ranges::all_of(blocks, isBody);
}

// How many lines of the text, once its breaks are healed, open or close code.
qsizetype fencesIn(QStringView lines) {
    const QString healed = withHealedLineBreaks(lines);
    return std::ranges::count_if(QStringView(healed).split(u'\n'), [](QStringView line) {
        return replylines::opensOrClosesFence(trimmedBlanks(line));
    });
}

} // namespace

QByteArray ReplyPrinter::grow(QStringView text) {
    const qsizetype end = text.lastIndexOf(u'\n') + 1;
    if (end == m_lines.size()) return {};
    if (!text.first(end).startsWith(m_lines)) return readRevised(text.first(end));
    QByteArray bytes;
    while (m_lines.size() < end) {
        const qsizetype start = m_lines.size();
        bytes += readLine(text.sliced(start, text.indexOf(u'\n', start) + 1 - start));
    }
    return bytes;
}

QByteArray ReplyPrinter::finish(QStringView reply) {
    QByteArray bytes = print(0, sourcesOf(reply));
    if (hasPrinted()) bytes += '\n';
    return bytes;
}

// All of the tail is parsed if the line may begin or end a block, and else as often as the tail has
// grown by a part of itself, which a paragraph of many lines needs.
QByteArray ReplyPrinter::readLine(QStringView line) {
    const qsizetype start = m_lines.size();
    m_lines += line;
    const QString before = m_lines.sliced(m_lastLine, start - m_lastLine);
    m_lastLine = start;
    const bool isFence = fencesIn(line) > 0;
    if (isFence && fencesIn(line) % 2 == 1) m_isInCode = !m_isInCode;
    if (m_isInCode && !isFence) return {};
    if (isBlankLine(line) && isBlankLine(before)) return {};
    const bool hasGrown = tail().size() <= shortTail || tail().size() >= m_parsed + m_parsed / 8;
    if (!isFence && !hasGrown && !standsAlone(line) && !mayPart(before, line)) return {};
    m_parsed = tail().size();
    const QList<QStringList> grown = grownSources(tail());
    const QByteArray bytes = print(m_blocksBeforeTail, settledBlocks(grown));
    dropSettled(start, grown);
    return bytes;
}

QByteArray ReplyPrinter::readRevised(QStringView lines) {
    m_lines = lines.toString();
    m_lastLine = lines.isEmpty() ? 0 : lines.chopped(1).lastIndexOf(u'\n') + 1;
    m_tail = 0;
    m_parsed = m_lines.size();
    m_blocksBeforeTail = 0;
    m_isInCode = fencesIn(lines) % 2 == 1;
    return print(0, settledBlocks(grownSources(lines)));
}

// The tail begins anew behind the last line or before it, if all before that is settled.
void ReplyPrinter::dropSettled(qsizetype lineStart, const QList<QStringList>& grown) {
    if (!m_isInCode && settleUpTo(m_lines.size(), grown)) return;
    if (lineStart > m_tail) settleUpTo(lineStart, grown);
}

bool ReplyPrinter::settleUpTo(qsizetype position, const QList<QStringList>& grown) {
    const QStringView rest = QStringView(m_lines).sliced(position);
    const QStringList settled =
        sourcesWithin(QStringView(m_lines).sliced(m_tail, position - m_tail));
    for (std::size_t index = 0; index < joiningLines.size(); ++index) {
        const QString next = rest.toString() + joiningLines[index].toString();
        if (!isConcatenation(grown[static_cast<qsizetype>(index)], settled, sourcesWithin(next)))
            return false;
    }
    m_tail = position;
    m_parsed = 0;
    m_blocksBeforeTail = std::min(m_blocksBeforeTail + settled.size(), m_printed.size());
    return true;
}

// A backend may revise what it said; then what is new follows, since nothing printed can be taken
// back.
QByteArray ReplyPrinter::print(qsizetype from, const QStringList& blocks) {
    const auto [printed, next] =
        std::mismatch(m_printed.cbegin() + from, m_printed.cend(), blocks.cbegin(), blocks.cend());
    const bool isRevised = printed != m_printed.cend() && next != blocks.cend();
    if (isRevised) m_printedBefore += QSet(m_printed.cbegin(), m_printed.cend());
    QStringList fresh(next, blocks.cend());
    if (!m_printedBefore.isEmpty())
        fresh.removeIf([this](const QString& block) { return m_printedBefore.contains(block); });
    const QString separator = hasPrinted() ? u"\n\n"_s : QString();
    if (next != blocks.cend()) {
        m_printed.resize(from);
        m_printed += blocks;
    }
    if (fresh.isEmpty()) return {};
    return (separator + fresh.join(u"\n\n"_s)).toUtf8();
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
