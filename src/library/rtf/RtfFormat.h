#pragma once

#include "library/rtf/RtfLexer.h"
#include "library/rtf/RtfTables.h"

namespace vorq {

/// What RTF says of text at a place, in its own measures. For RtfReader.
struct RtfFormat {
    // characters
    int font = -1; ///< in the font table; negative for the one of the document
    double size = 12.0;
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    bool isStruckThrough = false;
    bool isHidden = false;
    bool isDeleted = false;
    int color = 0;
    int highlight = 0;
    int background = 0;
    int shading = 0;
    // paragraphs, in twips
    int style = 0; ///< in the style sheet
    int leftIndent = 0;
    int firstIndent = 0; ///< beyond the left one
    int spaceBefore = 0;
    int spaceAfter = 0;
    int leading = 0;

    /// Takes in a control word. False if it says nothing of format.
    bool apply(const RtfToken& word);

    [[nodiscard]] NoteAttributes characterAttributes(const RtfTables& tables) const;
    void applyToParagraph(NoteAttributes& attributes, const RtfTables& tables) const;
};

} // namespace vorq
