#include "library/rtf/RtfWriter.h"

#include "library/richtext/NoteTypography.h"
#include "library/rtf/RtfNames.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>
#include <utility>
#include <vector>

namespace vorq {
namespace {

constexpr int twipsInPoint = 20;
constexpr double largestMeasure = 31680.0; // of RTF, in its units

int units(double points, int unitsInPoint) {
    if (!(std::abs(points) < largestMeasure))
        points = points < 0 ? -largestMeasure : largestMeasure;
    return static_cast<int>(
        std::lround(std::clamp(points * unitsInPoint, -largestMeasure, largestMeasure)));
}

class Writer {
  public:
    QByteArray write(const NoteRichText& text) {
        collectTables(text);
        m_out.reserve(text.length() * 2 + 2048);
        m_out += "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0\n";
        writeFontTable();
        writeColorTable();
        writeStyleSheet();
        writeParagraphs(text);
        m_out += '}';
        return std::move(m_out);
    }

  private:
    using FontKey = std::pair<QString, bool>; // family, whether semibold
    using ColorKey = std::tuple<std::uint8_t, std::uint8_t, std::uint8_t>;

    static FontKey fontKey(const NoteFont& font) {
        return {font.family, font.weight == NoteFontWeight::Semibold};
    }

    // Entries in the order in which they are first asked for.
    template<typename Entry>
    struct Table {
        std::vector<Entry> entries;
        std::map<Entry, qsizetype> indices;

        qsizetype indexOf(const Entry& entry) {
            const auto [found, isNew] =
                indices.try_emplace(entry, static_cast<qsizetype>(entries.size()));
            if (isNew) entries.push_back(entry);
            return found->second;
        }
    };

    // The first two entries after that for no colour are those that follow the appearance.
    qsizetype colorIndex(NoteRgb rgb) {
        return 3 + m_colors.indexOf({rgb.red, rgb.green, rgb.blue});
    }

    qsizetype colorIndex(const NoteColor& color) {
        switch (color.role) {
        case NoteColor::Role::Label:
            return 0;
        case NoteColor::Role::SecondaryLabel:
            return 2;
        case NoteColor::Role::Own:
            return colorIndex(color.rgb);
        }
        Q_UNREACHABLE();
    }

    void collect(const NoteAttributes& attributes) {
        m_fonts.indexOf(fontKey(attributes.font));
        colorIndex(attributes.color);
        if (attributes.highlight) colorIndex(*attributes.highlight);
    }

    void collectTables(const NoteRichText& text) {
        for (int style = 0; style < noteTextStyleCount; ++style)
            collect(NoteTypography::attributes(static_cast<NoteTextStyle>(style)));
        for (const NoteRichText::Run& run : text.runs())
            collect(run.attributes);
    }

    void control(const char* word, qsizetype value) { m_out.append(word).append(number(value)); }
    static QByteArray number(qsizetype value) { return QByteArray::number(qint64{value}); }

    // A name in a table, which a semicolon ends.
    void writeName(QStringView name) {
        for (const QChar unit : name) {
            if (unit == u';')
                m_out += "\\'3b";
            else
                writeUnit(unit);
        }
        m_out += ';';
    }

    // What is not at hand falls back by class and pitch, then by the name of another font.
    void writeFontTable() {
        m_out += "{\\fonttbl";
        for (std::size_t index = 0; index < m_fonts.entries.size(); ++index) {
            const auto& [family, isSemibold] = m_fonts.entries[index];
            control("{\\f", static_cast<qsizetype>(index));
            if (family == monospacedFontFamily)
                m_out += "\\fmodern\\fcharset0\\fprq1 ";
            else if (family == systemFontFamily)
                m_out += "\\fswiss\\fcharset0\\fprq2{\\*\\falt Helvetica}";
            else
                m_out += "\\fnil\\fcharset0 ";
            writeName(rtf::fontName(family, isSemibold));
            m_out += '}';
        }
        m_out += "}\n";
    }

    void writeColorTable() {
        m_out += "{\\colortbl;\\red0\\green0\\blue0;\\red127\\green127\\blue127;";
        for (const auto& [red, green, blue] : m_colors.entries) {
            control("\\red", red);
            control("\\green", green);
            control("\\blue", blue);
            m_out += ';';
        }
        m_out += "}\n{\\*\\expandedcolortbl;\\cssrgb\\c0\\c0\\c0\\c84706\\cname ";
        m_out.append(rtf::labelColorName.toLatin1())
            .append(";\\cssrgb\\c0\\c0\\c0\\c49804\\cname ");
        m_out.append(rtf::secondaryLabelColorName.toLatin1()).append(';');
        for (std::size_t index = 0; index < m_colors.entries.size(); ++index)
            m_out += ';';
        m_out += "}\n";
    }

    void writeStyleSheet() {
        m_out += "{\\stylesheet{\\s0\\snext0 Normal;}\n";
        for (int index = 0; index < noteTextStyleCount; ++index) {
            const auto style = static_cast<NoteTextStyle>(index);
            const NoteAttributes& attributes = NoteTypography::attributes(style);
            m_out += '{';
            writeParagraphFormat(attributes);
            m_out += "\\sbasedon0";
            writeCharacterFormat(attributes);
            m_out += ' ';
            writeName(rtf::styleName(style));
            m_out += "}\n";
        }
        m_out += "}\n";
    }

    void writeParagraphFormat(const NoteAttributes& attributes) {
        if (attributes.style) {
            control("\\s", static_cast<qsizetype>(*attributes.style) + 1);
            if (attributes.style == NoteTextStyle::Heading) m_out += "\\outlinelevel0\\keepn";
            if (attributes.style == NoteTextStyle::Subheading) m_out += "\\outlinelevel1\\keepn";
        }
        const NoteParagraphFormat& format = attributes.paragraph;
        const int head = units(format.headIndent, twipsInPoint);
        control("\\li", head);
        control("\\fi", units(format.firstLineIndent, twipsInPoint) - head);
        control("\\sb", units(format.spacingBefore, twipsInPoint));
        control("\\sa", units(format.spacing, twipsInPoint));
        control("\\slleading", units(format.lineSpacing, twipsInPoint));
    }

    void writeCharacterFormat(const NoteAttributes& attributes) {
        const NoteFont& font = attributes.font;
        control("\\f", m_fonts.indexOf(fontKey(font)));
        const int halfPoints = std::max(units(font.size, 2), 1);
        control("\\fs", halfPoints);
        if (halfPoints != font.size * 2)
            control("\\fsmilli",
                    static_cast<qsizetype>(std::lround(std::min(font.size, 1e6) * 1000)));
        if (font.weight != NoteFontWeight::Regular) m_out += "\\b";
        if (font.isItalic) m_out += "\\i";
        if (attributes.isUnderlined) m_out += "\\ul";
        if (attributes.isStruckThrough) m_out += "\\strike";
        control("\\cf", colorIndex(attributes.color));
        if (!attributes.highlight) return;
        const qsizetype color = colorIndex(*attributes.highlight);
        control("\\cb", color);
        control("\\chcbpat", color);
        control("\\highlight", color);
    }

    // Each run is a group of its own: some readers apply \plain to the text before it as well.
    void writeParagraphs(const NoteRichText& text) {
        bool startsParagraph = true;
        qsizetype start = 0;
        for (const NoteRichText::Run& run : text.runs()) {
            const qsizetype runEnd = start + run.length;
            while (start < runEnd) {
                const qsizetype lineFeed = text.text().indexOf(u'\n', start);
                const bool endsParagraph = lineFeed >= 0 && lineFeed < runEnd;
                const qsizetype end = endsParagraph ? lineFeed + 1 : runEnd;
                if (std::exchange(startsParagraph, endsParagraph)) {
                    m_out += "\\pard\\plain";
                    writeParagraphFormat(run.attributes);
                }
                writeGroup(QStringView(text.text()).sliced(start, end - start), run.attributes);
                start = end;
            }
        }
    }

    void writeGroup(QStringView text, const NoteAttributes& attributes) {
        m_out += '{';
        writeCharacterFormat(attributes);
        m_out += ' ';
        bool followsBlank = false;
        for (const QChar unit : text) {
            const bool isBlank = unit == u' ';
            // A word processor that finds blanks side by side puts other white space between them.
            if (isBlank && followsBlank)
                m_out += "{ }";
            else
                writeUnit(unit);
            followsBlank = isBlank;
        }
        m_out += '}';
        if (text.endsWith(u'\n')) m_out += '\n';
    }

    void writeUnit(QChar unit) {
        switch (unit.unicode()) {
        case u'\n':
            m_out += "\\par";
            return;
        case u'\t':
            m_out += "\\tab ";
            return;
        case u'\f':
            m_out += "\\page ";
            return;
        case u'\u2028':
            m_out += "\\line ";
            return;
        case u'\u00A0':
            m_out += "\\~";
            return;
        case u'\\':
        case u'{':
        case u'}':
            m_out.append('\\').append(static_cast<char>(unit.unicode()));
            return;
        default:
            break;
        }
        if (unit.unicode() >= 0x20 && unit.unicode() < 0x7F)
            m_out += static_cast<char>(unit.unicode());
        else
            m_out.append("\\u").append(number(static_cast<qint16>(unit.unicode()))).append('?');
    }

    QByteArray m_out;
    Table<FontKey> m_fonts;
    Table<ColorKey> m_colors;
};

} // namespace

QByteArray writeRtf(const NoteRichText& text) {
    return Writer().write(text);
}

} // namespace vorq
