#pragma once

#include "library/richtext/NoteRichText.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace vorq {

/// Turns an assistant's reply, which is loose Markdown, into the rich text of a note. All functions
/// are pure, linear in the text, and may be called on any thread.
struct VorqNoteImport {
    VorqNoteImport() = delete;

    /// What a note keeps of a structured text.
    struct Payload {
        QString title;
        QString plain;
        std::optional<QByteArray> rtf; ///< the same with its format; nothing if there is none

        bool operator==(const Payload&) const = default;
    };

    /// The reply as a note. Nothing for a reply of white space alone.
    [[nodiscard]] static std::optional<Payload> structure(QStringView reply);

    /// The note with the reply below an empty line. A note that still shows raw Markdown is made
    /// rich text as a whole. RTF that cannot be read counts as absent. Nothing for a reply of white
    /// space alone.
    [[nodiscard]] static std::optional<Payload>
    append(QStringView reply, QStringView existingPlain,
           const std::optional<QByteArray>& existingRtf);

    /// Whether the text shows raw Markdown.
    [[nodiscard]] static bool needsMigration(QStringView text);

    [[nodiscard]] static NoteRichText attributedDocument(QStringView reply);

    /// The first line without list markers, shortened; "New Note" if nothing is left.
    [[nodiscard]] static QString titleFrom(QStringView plain);

    /// Nothing for an empty document.
    [[nodiscard]] static std::optional<QByteArray> rtfData(const NoteRichText& document);

    /// Adds the trimmed text as a paragraph of its own; an empty text adds nothing. Bold Markdown
    /// becomes bold text unless it is to be kept.
    static void appendParagraph(QStringView text, NoteTextStyle style, qsizetype listIndex,
                                NoteRichText& document, bool keepInlineMarkdown = false);

    /// Makes what stands between two pairs of asterisks bold, in this font, and takes the asterisks
    /// away.
    static void applyInlineBold(NoteRichText& paragraph, const NoteFont& font = NoteFont());
};

} // namespace vorq
