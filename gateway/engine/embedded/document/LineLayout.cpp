#include "engine/embedded/document/LineLayout.h"

#include "engine/embedded/document/LineShape.h"
#include "engine/embedded/words/PhraseList.h"
#include "support/Utf8.h"

#include <algorithm>
#include <array>
#include <string>

namespace vorq::gateway {
namespace {

constexpr std::size_t kWidest = 240;           // columns
constexpr std::size_t kNarrowestProse = 40;    // columns
constexpr std::size_t kLongestTitleLine = 110; // bytes

bool isWide(char32_t c) {
    return c >= 0x1100 && (isHan(c) || isHiragana(c) || isKatakana(c) ||
                           (c >= 0x3000 && c <= 0x303F) || (c >= 0xFF00 && c <= 0xFF60));
}

std::size_t columnsOf(std::string_view line) {
    std::size_t columns = 0;
    for (std::size_t i = 0; i < line.size() && columns < kWidest;) {
        const CodePoint c = decodeAt(line, i);
        columns += isWide(c.value) ? 2 : 1;
        i += c.length;
    }
    return columns;
}

std::size_t firstWordColumns(std::string_view line) {
    if (!line.empty() && isWide(decodeAt(line, 0).value)) return 2;
    return columnsOf(line.substr(0, line.find(' ')));
}

/// Words between blanks; of a script without blanks, every second character.
std::size_t wordCount(std::string_view line) {
    std::size_t words = 0;
    std::size_t wide = 0;
    bool inWord = false;
    for (std::size_t i = 0; i < line.size();) {
        const CodePoint c = decodeAt(line, i);
        const bool isWord = isWordCharacter(c.value);
        if (isWide(c.value)) ++wide;
        if (isWord && !inWord && !isWide(c.value)) ++words;
        inWord = isWord && !isWide(c.value);
        i += c.length;
    }
    return words + (wide + 1) / 2;
}

std::string_view lastCharacter(std::string_view text) {
    std::size_t begin = text.size();
    while (begin > 0) {
        --begin;
        if ((static_cast<unsigned char>(text[begin]) & 0xC0U) != 0x80U) break;
    }
    return text.substr(begin);
}

bool isOneOf(std::string_view character, std::initializer_list<std::string_view> characters) {
    return std::ranges::find(characters, character) != characters.end();
}

std::string_view withoutClosers(std::string_view line) {
    while (!line.empty() &&
           isOneOf(lastCharacter(line), {"\"", "'", ")", "]", "”", "’", "»", "“", "」", "』", "）",
                                         "*", "_", " ", "\u00A0", "\u202F"})) {
        line.remove_suffix(lastCharacter(line).size());
    }
    return line;
}

bool hasDigit(std::string_view text) {
    return text.find_first_of("0123456789") != std::string_view::npos;
}

/// The bytes of "1. ", "§ 4 " or "Art. 3 " at the start of a heading.
std::size_t numbering(std::string_view line) {
    std::size_t i = 0;
    const std::string lower = lowered(line.substr(0, std::min<std::size_t>(line.size(), 12)));
    for (std::string_view opening :
         {"§§", "§", "art.", "article", "chapter", "kapitel", "section"}) {
        if (lower.starts_with(opening)) {
            i = opening.size();
            break;
        }
    }
    while (i < line.size() && line[i] == ' ')
        ++i;
    const std::size_t digits = i;
    while (i < line.size() && ((line[i] >= '0' && line[i] <= '9') || line[i] == '.'))
        ++i;
    if (i == digits || i >= line.size() || line[i] != ' ') return 0;
    return i + 1;
}

std::size_t timeLength(std::string_view text) {
    const auto digitAt = [&](std::size_t i) {
        return i < text.size() && text[i] >= '0' && text[i] <= '9';
    };
    std::size_t i = 0;
    while (i < 2 && digitAt(i))
        ++i;
    if (i == 0) return 0;
    std::size_t parts = 0;
    while (i < text.size() && (text[i] == ':' || text[i] == '.') && digitAt(i + 1) &&
           digitAt(i + 2) && !digitAt(i + 3)) {
        i += 3;
        ++parts;
    }
    return parts == 0 ? 0 : i;
}

} // namespace

bool endsSentence(std::string_view line) {
    return isOneOf(lastCharacter(withoutClosers(line)),
                   {".", "!", "?", "…", "。", "！", "？", "؟", "۔", "।"});
}

bool endsQuestion(std::string_view line) {
    return isOneOf(lastCharacter(withoutClosers(line)), {"?", "？", "؟"});
}

std::size_t speakerLabel(std::string_view line) {
    constexpr std::size_t longestName = 40;
    std::size_t i = line.starts_with('[') || line.starts_with('(') ? 1 : 0;
    const std::size_t time = timeLength(line.substr(i));
    if (time == 0) return 0;
    i += time;
    i = std::min(line.find_first_not_of("]),- ", i), line.size());
    const std::string_view rest = line.substr(i, longestName);
    const std::size_t colon = rest.find(": ");
    const std::size_t wide = rest.find("：");
    if (colon == std::string_view::npos && wide == std::string_view::npos) return 0;
    const bool isPlain = colon < wide;
    const std::size_t length = isPlain ? colon : wide;
    if (length == 0 || wordCount(rest.substr(0, length)) > 4) return 0;
    return i + length + (isPlain ? 2 : 3);
}

LineLayout::LineLayout(std::string_view text, const Lexicon& lexicon) : m_lexicon(lexicon) {
    std::array<std::size_t, kWidest + 1> widths{};
    std::size_t pairs = 0;
    // Twice: first for the margin, then for how many lines reach it.
    const auto eachPair = [&](const auto& visit) {
        std::string_view rest = text;
        std::string_view before;
        for (std::string_view raw; nextLine(rest, raw);) {
            const std::string_view line = trimmed(raw);
            const bool isProse = listMarker(line) == 0 && headingMarker(line) == 0;
            if (!before.empty() && !line.empty() && isProse) visit(before, line);
            before = line;
        }
    };
    eachPair([&](std::string_view before, std::string_view) {
        ++widths[columnsOf(before)];
        ++pairs;
    });
    std::size_t margin = kWidest;
    for (std::size_t beyond = widths[margin]; margin > 0 && beyond * 10 <= pairs;)
        beyond += widths[--margin];
    if (pairs == 0 || margin < kNarrowestProse || margin == kWidest) return;
    std::size_t full = 0;
    eachPair([&](std::string_view before, std::string_view line) {
        if ((columnsOf(before) + 1 + firstWordColumns(line)) * 10 >= margin * 9) ++full;
    });
    if (full * 10 >= pairs * 6) m_margin = margin;
}

bool LineLayout::continues(std::string_view before, std::string_view line) const {
    if (speakerLabel(line) > 0) return false;
    const char32_t first = decodeAt(line, 0).value;
    const bool isLower = isWordCharacter(first) && !isUpperCase(first) && first >= U'a' &&
                         m_lexicon.data.hasBlanks && &m_lexicon != &lexiconOf(Language::Arabic);
    if (isLower && speakerLabel(before) == 0) return true;
    return m_margin > 0 && (columnsOf(before) + 1 + firstWordColumns(line)) * 10 >= m_margin * 9;
}

bool LineLayout::isHeading(std::string_view line, std::string_view next,
                           std::string_view behind) const {
    const std::size_t number = std::max(numbering(line), listMarker(line));
    const std::string_view words = trimmed(line.substr(number));
    if (words.empty() || endsSentence(words) || hasDigit(words) || speakerLabel(line) > 0 ||
        listMarker(next) > 0 || words.ends_with(',') || words.contains(": ")) {
        return false;
    }
    const std::size_t count = wordCount(words);
    if (next.empty()) {
        // Notes of a few words each with blank lines between them are no headings.
        const bool leads = endsSentence(behind) || listMarker(behind) > 0 ||
                           columnsOf(behind) > 2 * columnsOf(words);
        return leads && listMarker(line) == 0 && count <= 8;
    }
    if (continues(line, next)) return false;
    const bool isEntry = next.substr(0, 40).contains(": ") && number == 0;
    const bool isLabel = words.ends_with(':') || words.ends_with("：");
    return isLabel || (!isEntry && count <= 5 && columnsOf(next) > columnsOf(words)) ||
           (number > 0 && count <= 6);
}

bool LineLayout::isTitle(std::string_view line, std::string_view next) const {
    if (line.size() > kLongestTitleLine || endsSentence(line) || speakerLabel(line) > 0 ||
        line.ends_with(',') || listMarker(line) > 0 || line.ends_with(';')) {
        return false;
    }
    if (next.empty()) return true;
    return !continues(line, next) && wordCount(line) <= 12 && next.substr(0, 40).contains(':');
}

bool LineLayout::isGreeting(std::string_view line) const {
    constexpr std::size_t mostWords = 7;
    if (line.size() > kLongestTitleLine || wordCount(line) > mostWords) return false;
    const bool isOpen = isOneOf(lastCharacter(line), {",", ":", "：", "，", "!", "！", "、"});
    const std::string lower = lowered(line);
    return anyPhrase(m_lexicon.data.greetings, [&](std::string_view greeting) {
        return lower.starts_with(greeting) && (isOpen || lower.size() <= greeting.size() + 3);
    });
}

bool LineLayout::isClosing(std::string_view line) const {
    if (line.size() > kLongestTitleLine) return false;
    while (!line.empty() &&
           isOneOf(lastCharacter(line), {",", ".", "!", "。", "！", "，", "、", ":", " "})) {
        line.remove_suffix(lastCharacter(line).size());
    }
    const std::string lower = lowered(line);
    return anyPhrase(m_lexicon.data.closings,
                     [&](std::string_view closing) { return lower == closing; });
}

} // namespace vorq::gateway
