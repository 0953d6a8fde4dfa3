#include "rendering/AssistantReplyDocument.h"

#include "rendering/ReplyScanner.h"
#include "rendering/SourceWriter.h"
#include "support/text/Graphemes.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Document = AssistantReplyDocument;
using Kind = Document::Kind;
using Views = std::span<const QStringView>;

// A reply of fewer characters is not shown while its first block still grows.
constexpr qsizetype fewestShownCharacters = 12;

// Code units that a block takes in a reply of many blocks.
constexpr qsizetype unitsPerBlock = 100;

QStringList toStrings(Views views) {
    QStringList strings;
    strings.reserve(static_cast<qsizetype>(views.size()));
    for (const QStringView view : views)
        strings.append(view.toString());
    return strings;
}

QStringList cellsOf(QStringView line, qsizetype expected) {
    QStringList cells;
    cells.reserve(expected);
    replylines::forEachTableCell(line, [&](QStringView cell) { cells.append(cell.toString()); });
    return cells;
}

class BlockBuilder {
  public:
    QList<Document::Block> blocks;

    explicit BlockBuilder(qsizetype textSize) { blocks.reserve(4 + textSize / unitsPerBlock); }

    void heading(bool isFirst, QStringView text) {
        add(isFirst ? Kind::Title : Kind::Section).text = text.toString();
    }
    void body(QStringView text) { add(Kind::Body).text = text.toString(); }
    void bullets(Views items) { add(Kind::Bullets).items = toStrings(items); }
    void numbered(Views items) { add(Kind::Numbered).items = toStrings(items); }
    void quote(QStringView text) { add(Kind::Quote).text = text.toString(); }
    void code(QStringView text) { add(Kind::Code).text = text.toString(); }
    void table(QStringView header, Views rows) {
        Document::Block& block = add(Kind::Table);
        block.header = cellsOf(header, 4);
        block.rows.reserve(static_cast<qsizetype>(rows.size()));
        for (const QStringView row : rows)
            block.rows.append(cellsOf(row, block.header.size()));
    }
    void divider() { add(Kind::Divider); }

  private:
    Document::Block& add(Kind kind) {
        Document::Block& block = blocks.emplaceBack();
        block.kind = kind;
        return block;
    }
};

class BlockCounter {
  public:
    qsizetype count = 0;

    void heading(bool /*isFirst*/, QStringView /*text*/) { ++count; }
    void body(QStringView /*text*/) { ++count; }
    void bullets(Views /*items*/) { ++count; }
    void numbered(Views /*items*/) { ++count; }
    void quote(QStringView /*text*/) { ++count; }
    void code(QStringView /*text*/) { ++count; }
    void table(QStringView /*header*/, Views /*rows*/) { ++count; }
    void divider() { ++count; }
};

void write(SourceWriter& writer, const Document::Block& block) {
    switch (block.kind) {
    case Kind::Title:
    case Kind::Section:
        return writer.heading(block.kind == Kind::Title, block.text);
    case Kind::Body:
        return writer.body(block.text);
    case Kind::Bullets:
        return writer.bullets(block.items);
    case Kind::Numbered:
        return writer.numbered(block.items);
    case Kind::Quote:
        return writer.quote(block.text);
    case Kind::Code:
        return writer.code(block.text);
    case Kind::Table:
        return writer.cells(block.header, block.rows);
    case Kind::Divider:
        return writer.divider();
    }
}

} // namespace

QLatin1StringView AssistantReplyDocument::kindName(Kind kind) {
    constexpr QLatin1StringView names[] = {"title"_L1,   "section"_L1,  "body"_L1,
                                           "bullets"_L1, "numbered"_L1, "quote"_L1,
                                           "code"_L1,    "table"_L1,    "divider"_L1};
    return names[static_cast<std::size_t>(kind)];
}

QList<AssistantReplyDocument::Block> AssistantReplyDocument::blocks(QStringView text) {
    BlockBuilder builder(text.size());
    ReplyScanner(builder).scan(text);
    return std::move(builder.blocks);
}

qsizetype AssistantReplyDocument::blockCount(QStringView text) {
    BlockCounter counter;
    ReplyScanner(counter).scan(text);
    return counter.count;
}

QString AssistantReplyDocument::source(std::span<const Block> blocks) {
    SourceWriter writer(0);
    for (const Block& block : blocks)
        write(writer, block);
    return std::move(writer).source();
}

QString AssistantReplyDocument::committedSource(QStringView text, bool finished) {
    const QStringView reply = trimmed(text);
    if (finished) return reply.toString();
    SourceWriter writer(reply.size() + reply.size() / 8 + 64);
    ReplyScanner(writer).scan(reply);
    if (writer.blockCount() >= 2) return std::move(writer).sourceBeforeLastBlock();
    return graphemeCountAtLeast(reply, fewestShownCharacters) ? reply.toString() : QString();
}

QString AssistantReplyDocument::inlinePlain(QStringView text) {
    return replylines::withoutOuterBold(text).toString();
}

} // namespace vorq
