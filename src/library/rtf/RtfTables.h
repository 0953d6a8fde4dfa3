#pragma once

#include "library/rtf/RtfLexer.h"
#include "library/rtf/RtfNames.h"

#include <optional>
#include <unordered_map>
#include <vector>

namespace vorq {

/// The tables at the head of an RTF document: fonts, colours and paragraph styles. For RtfReader,
/// which hands it the control words and texts of each table and tells it where an entry ends.
class RtfTables {
  public:
    struct Font {
        rtf::NamedFont named{};
        std::optional<int> charset{};
        std::optional<int> codePage{};
    };

    enum class Table { Fonts, Colors, ExpandedColors, Styles };

    void word(Table table, const RtfToken& word);
    void text(QStringView text) { m_name += text; }
    void endEntry(Table table);

    void setDefaultFont(int number) { m_defaultFont = number; }

    /// Of an unknown number, the document's font.
    [[nodiscard]] const Font& font(int number) const;
    /// The font whose entry is being read.
    [[nodiscard]] const Font& openFont() const { return m_font; }

    [[nodiscard]] NoteColor color(int index) const;
    /// Nothing for the first colour, which stands for none behind text, and for unknown ones.
    [[nodiscard]] std::optional<NoteRgb> background(int index) const;

    [[nodiscard]] std::optional<NoteTextStyle> style(int number) const;

  private:
    [[nodiscard]] std::optional<NoteRgb> entry(int index) const;
    void fontWord(const RtfToken& word);
    void colorWord(const RtfToken& word);

    std::unordered_map<int, Font> m_fonts;
    std::unordered_map<int, NoteTextStyle> m_styles;
    std::vector<std::optional<NoteRgb>> m_colors;
    std::vector<QString> m_colorNames; // beside the colours, empty for most
    int m_defaultFont = 0;
    // The entry that is being read.
    QString m_name;
    Font m_font;
    int m_number = 0; // of a font or style
    std::optional<NoteRgb> m_color;
    bool m_isNamed = false;
};

} // namespace vorq
