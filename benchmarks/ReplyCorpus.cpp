#include "ReplyCorpus.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace vorq::bench {
namespace {

using Words = std::span<const std::string_view>;

constexpr std::string_view asciiWords[] = {
    "the",     "river",    "carries", "silt",    "and",       "nutrients", "to",    "fields",
    "because", "spring",   "floods",  "rise",    "over",      "its",       "banks", "when",
    "farmers", "watch",    "levels",  "closely", "for",       "signs",     "of",    "change",
    "a",       "delta",    "forms",   "where",   "it",        "meets",     "sea",   "in",
    "budget",  "planning", "team's",  "review",  "(usually)", "3.5",       "e.g.",  "well-known"};

constexpr std::string_view typographicWords[] = {
    "the",   "river’s", "“carries”", "silt",  "—",      "nutrients", "café",  "fields",
    "it’s",  "spring",  "floods",    "rise",  "over",   "its",       "naïve", "when",
    "don’t", "watch",   "levels…",   "‘for’", "signs",  "of",        "–",     "change",
    "a",     "delta",   "forms",     "where", "resumé", "meets",     "sea",   "in"};

constexpr std::string_view mixedWords[] = {
    "川は",   "栄養を運び", "春になると",     "洪水が起こる", "農家は",
    "水位を", "注意深く",   "見守っている。", "データ",       "Plan",
    "予算",   "チームの",   "レビュー",       "🌊",           "👩‍🌾",
    "東京",   "and",        "三角州が",       "できる場所",   "👍🏽",
    "変化の", "兆しを",     "探す",           "2024年"};

constexpr std::string_view codeLines[] = {"for (int i = 0; i < n; ++i) {",
                                          "    total += values[i] * weights[i];",
                                          "}",
                                          "def area(r): return 3.14159 * r ** 2",
                                          "SELECT name, level FROM rivers WHERE level > 3;",
                                          "# comment with `ticks` and **stars**",
                                          ""};

class Writer {
  public:
    explicit Writer(Script script) : m_script(script) {}

    std::string text(std::size_t bytes) {
        while (m_text.size() < bytes)
            block();
        return std::move(m_text);
    }

  private:
    // A linear congruential generator: the same on every platform.
    std::uint32_t below(std::uint32_t limit) {
        m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<std::uint32_t>(m_state >> 33U) % limit;
    }

    std::string_view pick(Words words) {
        return words[below(static_cast<std::uint32_t>(words.size()))];
    }

    Words words() const {
        switch (m_script) {
        case Script::Ascii:
            return asciiWords;
        case Script::Typographic:
            return typographicWords;
        case Script::Mixed:
            return mixedWords;
        }
        return {};
    }

    void phrase(std::uint32_t count) {
        for (std::uint32_t index = 0; index < count; ++index) {
            if (index > 0) m_text += ' ';
            const bool bold = below(24) == 0;
            if (bold) m_text += "**";
            const std::size_t start = m_text.size();
            m_text += pick(words());
            if (index == 0 && m_text[start] >= 'a' && m_text[start] <= 'z')
                m_text[start] = static_cast<char>(m_text[start] - 'a' + 'A');
            if (bold) m_text += "**";
        }
    }

    void sentences(std::uint32_t count) {
        for (std::uint32_t index = 0; index < count; ++index) {
            if (index > 0) m_text += ' ';
            phrase(8 + below(14));
            m_text += '.';
        }
    }

    void heading() {
        m_text += below(3) == 0 ? "# " : "## ";
        phrase(2 + below(5));
        m_text += "\n\n";
    }

    void list(bool numbered) {
        const std::uint32_t items = 3 + below(4);
        for (std::uint32_t item = 1; item <= items; ++item) {
            m_text += numbered ? std::to_string(item) + ". " : "- ";
            if (below(2) == 0) {
                m_text += "**";
                m_text += pick(words());
                m_text += "**: ";
            }
            phrase(4 + below(12));
            m_text += '\n';
        }
        m_text += '\n';
    }

    void code() {
        m_text += "```\n";
        for (std::uint32_t line = 4 + below(8); line > 0; --line) {
            m_text += pick(codeLines);
            m_text += '\n';
        }
        m_text += "```\n\n";
    }

    void table() {
        const std::uint32_t columns = 2 + below(3);
        row(columns);
        for (std::uint32_t column = 0; column < columns; ++column)
            m_text += "|---";
        m_text += "|\n";
        for (std::uint32_t rows = 2 + below(4); rows > 0; --rows)
            row(columns);
        m_text += '\n';
    }

    void row(std::uint32_t columns) {
        for (std::uint32_t column = 0; column < columns; ++column) {
            m_text += "| ";
            phrase(1 + below(4));
            m_text += ' ';
        }
        m_text += "|\n";
    }

    void block() {
        switch (below(16)) {
        case 0:
        case 1:
        case 2:
            return heading();
        case 3:
        case 4:
        case 5:
            return list(false);
        case 6:
        case 7:
            return list(true);
        case 8:
            return code();
        case 9:
            return table();
        case 10:
            m_text += "> ";
            break;
        case 11:
            m_text += below(4) == 0 ? "---\n\n" : "";
            break;
        default:
            break;
        }
        sentences(2 + below(3));
        m_text += "\n\n";
    }

    Script m_script;
    std::uint64_t m_state = 0x5EED;
    std::string m_text;
};

constexpr std::string_view unitOf(Hostile hostile) {
    switch (hostile) {
    case Hostile::Bars:
        return "|||| a | b\n";
    case Hostile::Hashes:
        return "#\n####### x\n# y\n";
    case Hostile::Fences:
        return "````` x ``\n``\n";
    case Hostile::Quotes:
        return "> > > > a\n>>\n";
    case Hostile::Stars:
        return " **a* ***";
    case Hostile::Blanks:
        return "Plan\n\n\n\n\n\n\n\n";
    case Hostile::Headings:
        return " Aa-Bb' - **c* ";
    case Hostile::Sentences:
        return "A. B! C? ";
    case Hostile::Marks:
        return "-\u0301 *\u0301*\u0301 |\u0301\n";
    }
    return {};
}

} // namespace

const char* scriptName(Script script) {
    constexpr std::array names = {"ascii", "typographic", "mixed"};
    return names[static_cast<std::size_t>(script)];
}

std::string replyText(Script script, std::size_t bytes) {
    return Writer(script).text(bytes);
}

const char* hostileName(Hostile hostile) {
    constexpr std::array names = {"bars",   "hashes",   "fences",    "quotes", "stars",
                                  "blanks", "headings", "sentences", "marks"};
    return names[static_cast<std::size_t>(hostile)];
}

std::string hostileText(Hostile hostile, std::size_t bytes) {
    std::string text;
    while (text.size() < bytes)
        text += unitOf(hostile);
    return text;
}

} // namespace vorq::bench
