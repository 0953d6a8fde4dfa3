#include "support/Utf8.h"

#include <unicode/uchar.h>

#include <algorithm>

namespace vorq::gateway {
namespace {

bool isContinuation(unsigned char byte) {
    return (byte & 0xC0U) == 0x80U;
}

std::size_t lengthOf(char32_t c) {
    return c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
}

// Places in a text stay the same in lower case: the few letters whose small form takes other bytes
// ("İ", the sign for Kelvin) have none here.
char32_t lowerOf(char32_t c) {
    if (c < 0x80) return c >= U'A' && c <= U'Z' ? c + 32 : c;
    const auto small = static_cast<char32_t>(u_tolower(static_cast<UChar32>(c)));
    return lengthOf(small) == lengthOf(c) ? small : c;
}

bool isPunctuationBeyondAscii(char32_t c) {
    return (c >= 0x80 && c <= 0xBF && c != 0xAA && c != 0xB5 && c != 0xBA) || c == 0xD7 ||
           c == 0xF7 || (c >= 0x2000 && c <= 0x206F) || (c >= 0x20A0 && c <= 0x20CF) ||
           (c >= 0x2190 && c <= 0x2BFF) || (c >= 0x2E00 && c <= 0x2E7F) ||
           (c >= 0x3000 && c <= 0x3004) || (c >= 0x3008 && c <= 0x3020) || c == 0x3030 ||
           c == 0x30FB || (c >= 0xFE10 && c <= 0xFE6F) || (c >= 0xFF00 && c <= 0xFF0F) ||
           (c >= 0xFF1A && c <= 0xFF20) || (c >= 0xFF3B && c <= 0xFF40) ||
           (c >= 0xFF5B && c <= 0xFF65) || c == 0x061F || c == 0x060C || c == 0x061B ||
           c == 0x06D4 || c == 0x0964 || c == 0x0965 || (c >= 0xFFF0 && c <= 0xFFFF) ||
           c == 0xFEFF || (c >= 0x1F000 && c <= 0x1FAFF);
}

} // namespace

CodePoint decodeAt(std::string_view text, std::size_t offset) {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byteAt(offset);
    if (lead < 0x80) return {lead, 1};
    std::size_t length = 0;
    char32_t value = 0;
    char32_t smallest = 0;
    if ((lead & 0xE0U) == 0xC0U) {
        length = 2, value = lead & 0x1FU, smallest = 0x80;
    } else if ((lead & 0xF0U) == 0xE0U) {
        length = 3, value = lead & 0x0FU, smallest = 0x800;
    } else if ((lead & 0xF8U) == 0xF0U) {
        length = 4, value = lead & 0x07U, smallest = 0x10000;
    } else {
        return {};
    }
    if (offset + length > text.size()) return {};
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(byteAt(offset + i))) return {};
        value = (value << 6U) | (byteAt(offset + i) & 0x3FU);
    }
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    if (value < smallest || value > 0x10FFFF || surrogate) return {};
    return {value, length};
}

void appendUtf8(std::string& out, char32_t c) {
    const auto push = [&](char32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (c < 0x80) {
        push(c);
    } else if (c < 0x800) {
        push(0xC0 | (c >> 6U));
        push(0x80 | (c & 0x3FU));
    } else if (c < 0x10000) {
        push(0xE0 | (c >> 12U));
        push(0x80 | ((c >> 6U) & 0x3FU));
        push(0x80 | (c & 0x3FU));
    } else {
        push(0xF0 | (c >> 18U));
        push(0x80 | ((c >> 12U) & 0x3FU));
        push(0x80 | ((c >> 6U) & 0x3FU));
        push(0x80 | (c & 0x3FU));
    }
}

std::string sanitized(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint c = decodeAt(text, i);
        i += c.length;
        if (c.value == U'\r') {
            if (i >= text.size() || text[i] != '\n') out.push_back('\n');
        } else if (c.value == U'\n' || c.value == U'\t') {
            out.push_back(static_cast<char>(c.value));
        } else if (c.value < 0x20 || (c.value >= 0x7F && c.value < 0xA0)) {
            out.push_back(' ');
        } else {
            appendUtf8(out, c.value);
        }
    }
    return out;
}

std::string lowered(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint c = decodeAt(text, i);
        i += c.length;
        if (c.value < 0x80) {
            out.push_back(static_cast<char>(lowerOf(c.value)));
        } else {
            appendUtf8(out, lowerOf(c.value));
        }
    }
    return out;
}

std::string raised(std::string_view letter) {
    if (letter.empty()) return {};
    const char32_t c = decodeAt(letter, 0).value;
    const auto capital = static_cast<char32_t>(u_totitle(static_cast<UChar32>(c)));
    if (capital == c) return std::string(letter);
    std::string out;
    appendUtf8(out, capital);
    return out;
}

std::string_view trimmed(std::string_view text) {
    std::size_t begin = 0;
    while (begin < text.size()) {
        const CodePoint c = decodeAt(text, begin);
        if (!isBlank(c.value)) break;
        begin += c.length;
    }
    std::size_t end = text.size();
    while (end > begin) {
        std::size_t last = end - 1;
        while (last > begin && isContinuation(static_cast<unsigned char>(text[last])))
            --last;
        const CodePoint c = decodeAt(text, last);
        if (!isBlank(c.value) || last + c.length != end) break;
        end = last;
    }
    return text.substr(begin, end - begin);
}

std::string clipped(std::string_view text, std::size_t maxBytes) {
    if (text.size() <= maxBytes) return std::string(text);
    std::size_t end = maxBytes;
    while (end > 0 && isContinuation(static_cast<unsigned char>(text[end])))
        --end;
    const std::size_t blank = text.substr(0, end).find_last_of(" \t\n");
    if (blank != std::string_view::npos && blank > end / 2) end = blank;
    return std::string(trimmed(text.substr(0, end))) + "…";
}

std::size_t characterCount(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char c) { return !isContinuation(static_cast<unsigned char>(c)); }));
}

bool isBlank(char32_t c) {
    return c == U' ' || (c >= 0x09 && c <= 0x0D) || c == 0x85 || c == 0xA0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200B) || c == 0x2028 || c == 0x2029 || c == 0x202F ||
           c == 0x205F || c == 0x3000 || c == 0xFEFF;
}

bool isHan(char32_t c) {
    return (c >= 0x4E00 && c <= 0x9FFF) || (c >= 0x3400 && c <= 0x4DBF) || c == 0x3005 ||
           (c >= 0xF900 && c <= 0xFAFF) || (c >= 0x20000 && c <= 0x3FFFF);
}

bool isKatakana(char32_t c) {
    return (c >= 0x30A1 && c <= 0x30FA) || c == 0x30FC || (c >= 0xFF66 && c <= 0xFF9F);
}

bool isHiragana(char32_t c) {
    return c >= 0x3041 && c <= 0x309F;
}

bool isUpperCase(char32_t c) {
    return lowerOf(c) != c;
}

bool isWordCharacter(char32_t c) {
    if (c < 0x80) {
        return (c >= U'0' && c <= U'9') || (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z');
    }
    return !isPunctuationBeyondAscii(c);
}

} // namespace vorq::gateway
