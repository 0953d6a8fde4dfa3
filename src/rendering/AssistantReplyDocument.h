#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <span>

namespace vorq {

/// Turns the loose Markdown of a model's reply into a flat list of typed blocks, and blocks into
/// canonical Markdown.
///
/// Every input gives a result; text that fits no rule is body text. All functions are pure, linear
/// in the text, and may be called on any thread. Lengths count user-perceived characters.
struct AssistantReplyDocument {
    AssistantReplyDocument() = delete;

    enum class Kind {
        Title,    ///< text: the first heading of the reply
        Section,  ///< text: every later heading
        Body,     ///< text: one paragraph, on one line
        Bullets,  ///< items
        Numbered, ///< items, without their numbers
        Quote,    ///< text
        Code,     ///< text, without fences
        Table,    ///< header and rows, whose cell counts may differ
        Divider,  ///< nothing
    };

    /// One block. The members that its kind does not name are empty.
    ///
    /// The text of a heading keeps its markers when it came from a bold line ("**Label**"); pass it
    /// through inlinePlain().
    struct Block {
        Kind kind = Kind::Divider;
        QString text{};
        QStringList items{};
        QStringList header{};
        QList<QStringList> rows{};

        bool operator==(const Block&) const = default;
    };

    /// "title", "section", "body", "bullets", "numbered", "quote", "code", "table" or "divider".
    [[nodiscard]] static QLatin1StringView kindName(Kind kind);

    [[nodiscard]] static QList<Block> blocks(QStringView text);

    /// The size of blocks(text), without building it.
    [[nodiscard]] static qsizetype blockCount(QStringView text);

    /// Canonical Markdown of the blocks. Headings of every kind become bold lines.
    [[nodiscard]] static QString source(std::span<const Block> blocks);

    /// The part of a growing reply that may be shown: its canonical text without the last block,
    /// which may still be growing. Once finished, the trimmed text.
    [[nodiscard]] static QString committedSource(QStringView text, bool finished);

    /// The trimmed line without the bold markers that enclose the whole of it.
    [[nodiscard]] static QString inlinePlain(QStringView text);
};

} // namespace vorq

Q_DECLARE_TYPEINFO(vorq::AssistantReplyDocument::Block, Q_RELOCATABLE_TYPE);
