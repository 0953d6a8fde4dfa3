#pragma once

#include "library/richtext/NoteRichText.h"

namespace vorq {

/// How the text of notes is set.
struct NoteTypography {
    NoteTypography() = delete;

    [[nodiscard]] static const NoteAttributes& attributes(NoteTextStyle style);

    /// What an item of a list begins with, or nothing for what is no list. The index, at least 1,
    /// is for numbered lists.
    [[nodiscard]] static QString listPrefix(NoteTextStyle style, qsizetype index);

    /// The font in bold, or with `isBold` false not in bold.
    [[nodiscard]] static NoteFont fontByTogglingBold(NoteFont font, bool isBold);

    /// The text of a note that the user wrote without any format: its first line is the title and
    /// always ends with a line feed. Empty for a text of white space alone.
    [[nodiscard]] static NoteRichText document(QStringView plainUserNote);
};

} // namespace vorq
