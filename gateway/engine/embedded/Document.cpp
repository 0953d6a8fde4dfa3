#include "engine/embedded/Document.h"

#include "support/Utf8.h"

#include <algorithm>

namespace vorq::gateway {
namespace {

bool startsFence(std::string_view line) {
    return line.starts_with("```") || line.starts_with("~~~");
}

bool isRuleOrTable(std::string_view line) {
    if (line.starts_with('|')) return true;
    return line.find_first_not_of("-*_= \t") == std::string_view::npos;
}

/// The marker line that separates attached files in a request.
bool isAttachmentLine(std::string_view line) {
    return line.starts_with("--- Attached file:") && line.ends_with("---");
}

/// The bytes of a list marker ("- ", "12. ", "[x] ") at the start of the line, 0 if there is none.
std::size_t listMarker(std::string_view line) {
    for (std::string_view bullet : {"- ", "* ", "+ ", "• ", "– "}) {
        if (line.starts_with(bullet)) return bullet.size();
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

bool hasWord(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); i += decodeAt(text, i).length) {
        if (isWordCharacter(decodeAt(text, i).value)) return true;
    }
    return false;
}

/// Gathers lines into blocks and blocks into sentences.
class DocumentReader {
  public:
    void line(std::string_view raw) {
        std::string_view text = trimmed(raw);
        if (startsFence(text)) {
            endBlock();
            inFence_ = !inFence_;
            return;
        }
        if (inFence_) return;
        text.remove_prefix(std::min(text.find_first_not_of("> "), text.size()));
        if (text.empty() || isRuleOrTable(text) || isAttachmentLine(text)) {
            endBlock();
        } else if (const std::size_t heading = headingMarker(text); heading > 0) {
            endBlock();
            document_.headings.push_back(
                clipped(withoutInlineMarkup(trimmed(text.substr(heading))), 200));
        } else if (const std::size_t marker = listMarker(text); marker > 0) {
            endBlock();
            block_ = trimmed(text.substr(marker));
        } else {
            if (!block_.empty()) block_ += ' ';
            block_ += text;
        }
    }

    Document finish() {
        endBlock();
        return std::move(document_);
    }

  private:
    void endBlock() {
        bool first = true;
        for (std::string& sentence : splitSentences(withoutInlineMarkup(block_))) {
            if (!hasWord(sentence)) continue;
            document_.sentences.push_back({std::move(sentence), first});
            first = false;
        }
        block_.clear();
    }

    Document document_;
    std::string block_;
    bool inFence_ = false;
};

struct Link {
    std::string_view label;
    std::size_t length = 0;
};

/// The Markdown link "[label](address)" at the start of `text`; length 0 if there is none.
Link linkAt(std::string_view text) {
    constexpr std::size_t farthest = 600;
    text = text.substr(0, farthest);
    const std::size_t middle = text.find("](");
    if (middle == std::string_view::npos || text.substr(1, middle - 1).find('[') < middle)
        return {};
    const std::size_t end = text.find(')', middle);
    if (end == std::string_view::npos) return {};
    return {text.substr(1, middle - 1), end + 1};
}

} // namespace

std::string withoutInlineMarkup(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    const auto isWordAt = [&](std::size_t i) {
        return i < text.size() && isWordCharacter(decodeAt(text, i).value);
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool emphasis =
            c == '*' || (c == '_' && !(i > 0 && isWordAt(i - 1) && isWordAt(i + 1)));
        if (c == '`' || (emphasis && !(i + 1 < text.size() && text[i + 1] == ' ' &&
                                       (i == 0 || text[i - 1] == ' ')))) {
            continue;
        }
        if (c == '[') {
            if (const Link link = linkAt(text.substr(i)); link.length > 0) {
                out += link.label;
                i += link.length - 1;
                continue;
            }
        }
        out += c;
    }
    return out;
}

Document readDocument(std::string_view text) {
    DocumentReader reader;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        reader.line(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return reader.finish();
}

} // namespace vorq::gateway
