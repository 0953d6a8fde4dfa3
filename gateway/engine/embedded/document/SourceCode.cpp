#include "engine/embedded/document/LineShape.h"
#include "support/Utf8.h"

#include <algorithm>
#include <array>

namespace vorq::gateway {
namespace {

constexpr auto kComments = std::to_array<std::string_view>(
    {"///", "//!", "//", "/**", "/*", "*/", "* ", "# ", "-- ", ";; "});
constexpr auto kQuotes = std::to_array<std::string_view>({"\"\"\"", "'''"});

bool endsInOneOf(std::string_view line, std::initializer_list<std::string_view> endings) {
    return std::ranges::any_of(endings, [&](std::string_view e) { return line.ends_with(e); });
}

bool startsInOneOf(std::string_view line, std::initializer_list<std::string_view> openings) {
    return std::ranges::any_of(openings, [&](std::string_view o) { return line.starts_with(o); });
}

/// What stands behind a comment's mark; nothing in a line of code.
std::string_view commentIn(std::string_view line) {
    if (startsInOneOf(line, {"#include", "#define", "#!"})) return {};
    for (std::string_view mark : kComments) {
        if (!line.starts_with(mark)) continue;
        line.remove_prefix(mark.size());
        if (line.ends_with("*/")) line.remove_suffix(2);
        return trimmed(line);
    }
    const std::size_t behind = line.find(" // ");
    return behind == std::string_view::npos ? std::string_view{} : trimmed(line.substr(behind + 4));
}

std::size_t quoteIn(std::string_view line) {
    for (std::string_view quote : kQuotes) {
        if (const std::size_t at = line.find(quote); at != std::string_view::npos) return at;
    }
    return std::string_view::npos;
}

} // namespace

bool isStatement(std::string_view line) {
    if (endsInOneOf(line, {"{", "}", ";", "};", ");", "):", "(", ")", "[", "],", "),", "=>"})) {
        return !line.contains(". ");
    }
    if (startsInOneOf(line, {"#include", "#define", "import ", "def ", "class ", "return ", "fn ",
                             "func ", "@", "} else", "else:", "try:"})) {
        return !line.ends_with('.');
    }
    return (line.contains(" = ") || line.contains(" == ") || line.contains(" += ") ||
            line.contains("::") || line.contains("->") || line.contains(" := ")) &&
           !line.ends_with('.');
}

bool isSourceCode(std::string_view text) {
    constexpr std::size_t fewest = 5;
    std::size_t written = 0;
    std::size_t statements = 0;
    for (std::string_view raw; nextLine(text, raw);) {
        const std::string_view line = trimmed(raw);
        if (startsFence(line) || isAttachmentLine(line)) return false;
        if (line.empty()) continue;
        ++written;
        if (isStatement(line)) ++statements;
    }
    return statements >= fewest && statements * 5 >= written * 2;
}

std::string commentsOf(std::string_view program) {
    std::string text;
    bool quoted = false;
    for (std::string_view raw; nextLine(program, raw);) {
        std::string_view line = trimmed(raw);
        const std::size_t quote = quoteIn(line);
        if (quote == std::string_view::npos) {
            text.append(quoted ? line : commentIn(line)).push_back('\n');
            continue;
        }
        const std::string_view before = quoted ? line.substr(0, quote) : std::string_view{};
        line.remove_prefix(quote + 3);
        const std::size_t closing = quoteIn(line);
        const bool opens = !quoted;
        quoted = opens && closing == std::string_view::npos;
        text.append(opens ? trimmed(line.substr(0, closing)) : trimmed(before)).append("\n\n");
    }
    return text;
}

} // namespace vorq::gateway
