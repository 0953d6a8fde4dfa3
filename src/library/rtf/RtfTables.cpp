#include "library/rtf/RtfTables.h"

#include "support/text/Text.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// One entry for each index of the table that is in use.
template<typename Entry>
const Entry* entryAt(const std::vector<Entry>& table, int index) {
    const auto at = static_cast<std::size_t>(index);
    return index >= 0 && at < table.size() ? &table[at] : nullptr;
}

std::uint8_t component(int number) {
    return static_cast<std::uint8_t>(std::clamp(number, 0, 255));
}

} // namespace

void RtfTables::word(Table table, const RtfToken& word) {
    switch (table) {
    case Table::Fonts:
        return fontWord(word);
    case Table::Colors:
        return colorWord(word);
    case Table::ExpandedColors:
        if (word.word == "cname"_L1) m_isNamed = true;
        return;
    case Table::Styles:
        if (word.word == "s"_L1) m_number = word.number;
        return;
    }
}

void RtfTables::fontWord(const RtfToken& word) {
    if (word.word == "f"_L1)
        m_number = word.number;
    else if (word.word == "fcharset"_L1)
        m_font.charset = word.number;
    else if (word.word == "cpg"_L1)
        m_font.codePage = word.number;
}

void RtfTables::colorWord(const RtfToken& word) {
    NoteRgb rgb = m_color.value_or(NoteRgb());
    if (word.word == "red"_L1)
        rgb.red = component(word.number);
    else if (word.word == "green"_L1)
        rgb.green = component(word.number);
    else if (word.word == "blue"_L1)
        rgb.blue = component(word.number);
    else
        return;
    m_color = rgb;
}

void RtfTables::endEntry(Table table) {
    const QString name = std::exchange(m_name, {});
    switch (table) {
    case Table::Fonts:
        m_font.named = rtf::fontNamed(name);
        m_fonts.insert_or_assign(m_number, std::exchange(m_font, {}));
        break;
    case Table::Colors:
        m_colors.push_back(std::exchange(m_color, std::nullopt));
        break;
    case Table::ExpandedColors:
        m_colorNames.push_back(std::exchange(m_isNamed, false) ? trimmed(name).toString()
                                                               : QString());
        break;
    case Table::Styles:
        if (const auto style = rtf::styleNamed(name)) m_styles.insert_or_assign(m_number, *style);
        break;
    }
    m_number = 0;
}

const RtfTables::Font& RtfTables::font(int number) const {
    static const Font unknown{.named = {.family = systemFontFamily.toString()}};
    auto found = m_fonts.find(number);
    if (found == m_fonts.end()) found = m_fonts.find(m_defaultFont);
    return found == m_fonts.end() ? unknown : found->second;
}

NoteColor RtfTables::color(int index) const {
    using Role = NoteColor::Role;
    const QString* const name = entryAt(m_colorNames, index);
    if (name && *name == rtf::secondaryLabelColorName) return {.role = Role::SecondaryLabel};
    if (name &&
        (*name == rtf::labelColorName || *name == u"textColor" || *name == u"controlTextColor"))
        return {};
    const std::optional<NoteRgb> own = entry(index);
    if (index == 0 && own == NoteRgb()) return {}; // some name the colour of no choice black
    return own ? NoteColor{.role = Role::Own, .rgb = *own} : NoteColor();
}

std::optional<NoteRgb> RtfTables::background(int index) const {
    return index == 0 ? std::nullopt : entry(index);
}

std::optional<NoteRgb> RtfTables::entry(int index) const {
    const std::optional<NoteRgb>* const found = entryAt(m_colors, index);
    return found ? *found : std::nullopt;
}

std::optional<NoteTextStyle> RtfTables::style(int number) const {
    const auto found = m_styles.find(number);
    return found == m_styles.end() ? std::nullopt : std::optional(found->second);
}

} // namespace vorq
