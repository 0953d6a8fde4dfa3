#pragma once

#include "library/richtext/NoteTextStyle.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace vorq {

/// Families that stand for whatever font the user interface has; any other family is a font's name.
inline constexpr QStringView systemFontFamily = u".AppleSystemUIFont";
inline constexpr QStringView monospacedFontFamily = u".AppleSystemUIFontMonospaced";

enum class NoteFontWeight : std::uint8_t { Regular, Semibold, Bold };

struct NoteFont {
    QString family = systemFontFamily.toString();
    double size = 17.0; ///< points
    NoteFontWeight weight = NoteFontWeight::Regular;
    bool isItalic = false;

    bool operator==(const NoteFont&) const = default;
};

/// An opaque colour in sRGB.
struct NoteRgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const NoteRgb&) const = default;
};

/// The colour of text: one of the two that follow the appearance, or one of its own.
struct NoteColor {
    enum class Role : std::uint8_t { Label, SecondaryLabel, Own };
    Role role = Role::Label;
    NoteRgb rgb{}; ///< for Own

    bool operator==(const NoteColor&) const = default;
};

/// Lengths in points.
struct NoteParagraphFormat {
    double spacing = 0.0;       ///< below the paragraph
    double spacingBefore = 0.0; ///< above it
    double lineSpacing = 0.0;   ///< between its lines, beyond what the font asks for
    double headIndent = 0.0;    ///< of all lines but the first, from the margin
    double firstLineIndent = 0.0;

    bool operator==(const NoteParagraphFormat&) const = default;
};

/// What a stretch of text looks like. A paragraph takes its format and its style from its first
/// character.
struct NoteAttributes {
    NoteFont font;
    NoteColor color;
    std::optional<NoteRgb> highlight;
    bool isUnderlined = false;
    bool isStruckThrough = false;
    NoteParagraphFormat paragraph;
    std::optional<NoteTextStyle> style; ///< the tag "vorq.noteTextStyle"

    bool operator==(const NoteAttributes&) const = default;
};

/// Text with attributes. Positions and lengths count UTF-16 units; ranges that reach past the end
/// are cut there. Paragraphs end with a line feed, which belongs to the paragraph it ends.
class NoteRichText {
  public:
    /// A stretch of equal attributes; never empty, and never equal to its neighbours.
    struct Run {
        qsizetype length = 0;
        NoteAttributes attributes;

        bool operator==(const Run&) const = default;
    };

    NoteRichText() = default;
    NoteRichText(QStringView text, const NoteAttributes& attributes) { append(text, attributes); }

    [[nodiscard]] const QString& text() const { return m_text; }
    [[nodiscard]] qsizetype length() const { return m_text.size(); }
    [[nodiscard]] bool isEmpty() const { return m_text.isEmpty(); }
    [[nodiscard]] const std::vector<Run>& runs() const { return m_runs; }

    /// Of the character at this position, which must be in the text. Linear in the runs.
    [[nodiscard]] const NoteAttributes& attributesAt(qsizetype position) const;

    void append(QStringView text, const NoteAttributes& attributes);
    void append(const NoteRichText& text);

    /// Changes the attributes of each run in the range.
    void change(qsizetype start, qsizetype length,
                const std::function<void(NoteAttributes&)>& changeRun);

    [[nodiscard]] NoteRichText sliced(qsizetype start, qsizetype length) const;

    /// Its paragraphs without the line feeds between them; linear in the text and the runs.
    [[nodiscard]] std::vector<NoteRichText> paragraphs() const;

    bool operator==(const NoteRichText&) const = default;

  private:
    void appendRun(qsizetype length, const NoteAttributes& attributes);

    QString m_text;
    std::vector<Run> m_runs;
};

} // namespace vorq
