#include "engine/embedded/document/LineShape.h"

#include "support/Utf8.h"

#include <algorithm>
#include <array>

namespace vorq::gateway {
namespace {

constexpr auto kMailHeaders = std::to_array<std::string_view>({
    "from",         "to",           "cc",           "bcc",        "date",       "sent",
    "subject",      "reply-to",     "message-id",   "sender",     "received",   "von",
    "an",           "datum",        "gesendet",     "betreff",    "de",         "à",
    "objet",        "envoyé",       "para",         "asunto",     "enviado",    "in-reply-to",
    "mime-version", "return-path",  "content-type", "importance", "references", "fecha",
    "assunto",      "data",         "enviada em",   "da",         "a",          "oggetto",
    "onderwerp",    "aan",          "verzonden",    "от",         "кому",       "тема",
    "дата",         "من",           "إلى",          "الموضوع",    "التاريخ",    "发件人",
    "收件人",       "主题",         "日期",         "差出人",     "宛先",       "件名",
    "日時",         "date d'envoi",
});

std::size_t countOf(std::string_view line, std::string_view what) {
    std::size_t count = 0;
    for (std::size_t at = line.find(what); at != std::string_view::npos;
         at = line.find(what, at + what.size())) {
        ++count;
    }
    return count;
}

bool startsWithOneOf(std::string_view text, std::initializer_list<std::string_view> openings) {
    return std::ranges::any_of(openings, [&](std::string_view o) { return text.starts_with(o); });
}

bool isSeparated(std::string_view line, std::string_view separator) {
    return countOf(line, separator) >= 2 && !line.contains(std::string(separator) + ' ');
}

/// The bytes in front of a colon, ASCII or wide, near the beginning of a line; 0 if there is none.
std::size_t labelEnd(std::string_view line) {
    constexpr std::size_t longestName = 24;
    const std::string_view opening = line.substr(0, longestName);
    const std::size_t colon = std::min(opening.find(':'), opening.find("："));
    return colon == std::string_view::npos ? 0 : colon;
}

} // namespace

bool startsFence(std::string_view line) {
    return line.starts_with("```") || line.starts_with("~~~");
}

bool isRule(std::string_view line) {
    return line.find_first_not_of("-*_=|:+ \t") == std::string_view::npos;
}

bool isTableRow(std::string_view line) {
    return line.starts_with('|') || countOf(line, " | ") >= 2 || countOf(line, "\t") >= 2 ||
           isSeparated(line, ",") || isSeparated(line, ";");
}

bool isAttachmentLine(std::string_view line) {
    return line.starts_with("--- Attached file:") && line.ends_with("---");
}

bool isLinkDefinition(std::string_view line) {
    const std::size_t end = line.find("]: ");
    return line.starts_with('[') && !line.starts_with("[^") && end != std::string_view::npos &&
           (line.substr(end).contains("://") || line.substr(end).contains('/'));
}

bool isMailHeader(std::string_view line) {
    const std::string name = lowered(trimmed(line.substr(0, labelEnd(line))));
    return !name.empty() && std::ranges::find(kMailHeaders, name) != kMailHeaders.end();
}

std::string_view mailSubject(std::string_view line) {
    const auto drop = [&](std::initializer_list<std::string_view> openings) {
        const std::string lower = lowered(clipped(line, 20));
        for (std::string_view opening : openings) {
            if (!lower.starts_with(opening)) continue;
            line = trimmed(line.substr(opening.size()));
            return true;
        }
        return false;
    };
    if (!drop({"subject:", "betreff:", "objet:", "objet :", "asunto:", "assunto:", "oggetto:",
               "onderwerp:", "тема:", "الموضوع:", "主题:", "主题：", "件名:", "件名："})) {
        return {};
    }
    while (drop({"re:", "fwd:", "fw:", "aw:", "wg:", "tr:"})) {
    }
    return line;
}

bool isQuotationLine(std::string_view line) {
    const auto ends = [&](std::string_view ending) { return line.ends_with(ending); };
    return (line.starts_with("On ") && ends("wrote:")) ||
           (line.starts_with("Am ") && line.contains(" schrieb") && ends(":")) ||
           (line.starts_with("Le ") && line.contains(" a écrit") && ends(":")) ||
           startsWithOneOf(line, {"-----Original Message", "---------- Forwarded message",
                                  "-----Ursprüngliche Nachricht"});
}

std::size_t listMarker(std::string_view line) {
    std::size_t length = 0;
    for (std::string_view bullet : {"- ", "* ", "+ ", "• ", "– "}) {
        if (line.starts_with(bullet)) length = bullet.size();
    }
    if (length > 0) {
        const bool hasBox = startsWithOneOf(line.substr(length), {"[ ] ", "[x] ", "[X] "});
        return hasBox ? length + 4 : length;
    }
    std::size_t digits = 0;
    while (digits < line.size() && digits < 3 && line[digits] >= '0' && line[digits] <= '9') {
        ++digits;
    }
    const bool closed = digits > 0 && digits + 1 < line.size() &&
                        (line[digits] == '.' || line[digits] == ')') && line[digits + 1] == ' ';
    return closed ? digits + 2 : 0;
}

std::size_t headingMarker(std::string_view line) {
    const std::size_t level = std::min(line.find_first_not_of('#'), line.size());
    const bool heading = level >= 1 && level <= 6 && level < line.size() && line[level] == ' ';
    return heading ? level + 1 : 0;
}

} // namespace vorq::gateway
