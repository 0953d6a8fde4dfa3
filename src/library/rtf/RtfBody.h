#pragma once

#include "library/richtext/NoteRichText.h"
#include "library/rtf/RtfFormat.h"

namespace vorq {

/// Puts the text of an RTF document together, paragraph by paragraph: what RTF says of a paragraph
/// is settled only at its end. For RtfReader.
class RtfBody {
  public:
    /// Text without a line feed.
    void append(QStringView text, const RtfFormat& format, const RtfTables& tables);

    /// What the paragraph begins with as an item of a list.
    void appendMarker(QStringView text) { m_marker += text; }

    void endParagraph(const RtfFormat& format, const RtfTables& tables);
    void endCell() { ++m_cellEnds; }
    void endRow(const RtfFormat& format, const RtfTables& tables);
    void endDocument(const RtfFormat& format, const RtfTables& tables);

    [[nodiscard]] NoteRichText takeText() { return std::move(m_text); }

  private:
    void settleParagraph(const RtfFormat& format, const RtfTables& tables);

    NoteRichText m_text;
    NoteRichText m_paragraph; // still without what holds for all of it
    QString m_marker;
    int m_cellEnds = 0; // tabs that are due if more text follows in the row
};

} // namespace vorq
