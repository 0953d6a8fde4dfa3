// Any bytes as a reply: what the rules promise of every text must hold.

#include "rendering/AssistantReplyDocument.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <QtGlobal>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

using namespace vorq;
using Document = AssistantReplyDocument;
using Kind = Document::Kind;

void require(bool holds) {
    if (!holds) std::abort();
}

// UTF-8 mostly; an odd first byte stands for UTF-16, which may hold lone surrogates.
QString textOf(const std::uint8_t* data, std::size_t size) {
    if (size > 0 && (data[0] & 0x81U) == 0x81U) {
        QString text(static_cast<qsizetype>((size - 1) / 2), Qt::Uninitialized);
        std::memcpy(text.data(), data + 1, static_cast<std::size_t>(text.size()) * 2);
        return text;
    }
    return QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}

bool isTrimmedText(QStringView text) {
    return !text.isEmpty() && trimmed(text).size() == text.size();
}

void checkBlock(const Document::Block& block) {
    switch (block.kind) {
    case Kind::Body:
    case Kind::Quote:
    case Kind::Code:
        return require(isTrimmedText(block.text));
    case Kind::Title:
    case Kind::Section:
        return require(block.text.isEmpty() || !trimmedBlanks(block.text).isEmpty());
    case Kind::Bullets:
    case Kind::Numbered:
        return require(!block.items.isEmpty());
    case Kind::Table:
        return require(!block.header.isEmpty() && !block.rows.contains(QStringList()));
    case Kind::Divider:
        return require(block == Document::Block());
    }
}

void checkBlocks(const QList<Document::Block>& blocks) {
    bool sawHeading = false;
    for (const Document::Block& block : blocks) {
        checkBlock(block);
        if (block.kind == Kind::Title) require(!sawHeading);
        if (block.kind == Kind::Section) require(sawHeading);
        sawHeading = sawHeading || block.kind == Kind::Title;
    }
}

void checkCommitted(const QString& text) {
    const QString reply = trimmed(text).toString();
    require(Document::committedSource(text, true) == reply);
    const QList<Document::Block> blocks = Document::blocks(reply);
    const QString committed = Document::committedSource(text, false);
    if (blocks.size() >= 2) {
        const auto shown = static_cast<std::size_t>(blocks.size() - 1);
        require(committed == Document::source(std::span(blocks).first(shown)));
    } else {
        require(committed == (graphemeCount(reply) > 11 ? reply : QString()));
    }
    require(Document::blockCount(reply) == blocks.size());
}

void checkGraphemes(const QString& text) {
    QString joined;
    qsizetype count = 0;
    for (const QStringView character : splitGraphemes(text)) {
        require(!character.isEmpty());
        joined += character;
        ++count;
    }
    require(joined == text);
    require(graphemeCount(text) == count);
    require(graphemeCountAtLeast(text, count) && !graphemeCountAtLeast(text, count + 1));
    require(graphemePrefix(text, count).size() == text.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString text = textOf(data, size);
    checkBlocks(Document::blocks(text));
    checkCommitted(text);
    checkGraphemes(text);
    require(text.contains(Document::inlinePlain(text)));
    return 0;
}
