#include "engine/embedded/Document.h"

#include "engine/embedded/LineShape.h"
#include "support/Utf8.h"

#include <algorithm>

namespace vorq::gateway {
namespace {

using Lines = std::vector<std::string_view>;

constexpr std::size_t kLongestHeading = 200;

bool hasWord(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); i += decodeAt(text, i).length) {
        if (isWordCharacter(decodeAt(text, i).value)) return true;
    }
    return false;
}

/// "**Note**" or "[!NOTE]", alone on a line: a label of what follows and no sentence.
bool isLabel(std::string_view line) {
    if (line.starts_with("[!") && line.ends_with(']')) return true;
    return line.size() > 4 && line.starts_with("**") &&
           (line.ends_with("**") || line.ends_with(":**") || line.ends_with("**:")) &&
           !line.substr(2, line.size() - 5).contains("**");
}

/// The number of lines of the settings that some Markdown files begin with, 0 if there are none.
std::size_t frontMatterLength(const Lines& lines) {
    constexpr std::size_t longest = 60;
    if (lines.empty() || lines.front() != "---") return 0;
    for (std::size_t i = 1; i < std::min(lines.size(), longest); ++i) {
        if (lines[i] == "---" || lines[i] == "...") return i + 1;
        const bool isSetting = lines[i].contains(':') || lines[i].starts_with(' ') ||
                               lines[i].starts_with('-') || lines[i].starts_with('#');
        if (!isSetting) return 0;
    }
    return 0;
}

/// Gathers lines into blocks and blocks into sentences.
class DocumentReader {
  public:
    /// `next` is the line behind it, empty at the end.
    void line(std::string_view raw, std::string_view next) {
        if (skipsCode(raw) || skipsComment(raw)) return;
        std::string_view text = trimmed(raw);
        const bool isQuoted = text.starts_with('>');
        text.remove_prefix(std::min(text.find_first_not_of("> "), text.size()));
        if (skipsMail(trimmed(raw), text, trimmed(next))) return;
        if (isRule(text) && !text.empty() && !text.starts_with('|') && underlines(text)) return;
        if (skipsTable(text, trimmed(next)) || text.empty() || isRule(text) ||
            isAttachmentLine(text) || isLinkDefinition(text)) {
            endBlock();
        } else if (const std::size_t marker = headingMarker(text); marker > 0) {
            endBlock();
            addHeading(trimmed(text.substr(marker)));
        } else if (isLabel(text)) {
            endBlock();
            if (!isQuoted) addHeading(text);
        } else if (const std::size_t bullet = listMarker(text); bullet > 0) {
            endBlock();
            block_ = trimmed(text.substr(bullet));
            inList_ = true;
        } else {
            continueBlock(text);
        }
        wasBlank_ = text.empty();
    }

    Document finish() {
        endBlock();
        return std::move(document_);
    }

  private:
    /// Fenced code, and code that is set in. Prose that is set in stays.
    bool skipsCode(std::string_view raw) {
        const std::string_view text = trimmed(raw);
        if (startsFence(text) && (!inFence_ || text.starts_with(fence_))) {
            endBlock();
            inFence_ = !inFence_;
            fence_ = text.substr(0, 3);
            return true;
        }
        if (inFence_) return true;
        const bool isSetIn = raw.starts_with("    ") || raw.starts_with('\t');
        const bool begins = wasBlank_ && !inList_ && isStatement(text);
        inSetInCode_ = text.empty() ? inSetInCode_ : isSetIn && (inSetInCode_ || begins);
        return inSetInCode_ && !text.empty();
    }

    bool skipsComment(std::string_view raw) {
        if (!inComment_ && !trimmed(raw).starts_with("<!--")) return false;
        if (!inComment_) endBlock();
        inComment_ = !raw.contains("-->");
        return true;
    }

    /// The head of a mail, the line above a quoted one, and a signature.
    bool skipsMail(std::string_view line, std::string_view text, std::string_view next) {
        if (line == "--") inSignature_ = true;
        const bool signs = inSignature_ && !line.empty() && !line.starts_with('>');
        inSignature_ = signs;
        const bool isHead = isMailHeader(text) && (inMailHead_ || isMailHeader(next));
        inMailHead_ = isHead;
        if (!signs && !isHead && !isQuotationLine(text)) return false;
        endBlock();
        if (const std::string_view subject = mailSubject(text); isHead && !subject.empty()) {
            addHeading(subject);
        }
        return true;
    }

    /// Rows of values. A comma may stand without a blank once in prose, but not in two lines
    /// running; nor does prose have a row of dashes below its first line.
    bool skipsTable(std::string_view text, std::string_view next) {
        const bool startsTable = next.contains('|') && isRule(next) && text.contains('|');
        const bool row = !text.empty() && (text.starts_with('|') || isTableRow(text));
        const bool isRow = row && (inTable_ || text.starts_with('|') || isTableRow(next));
        inTable_ = isRow || startsTable || (inTable_ && text.contains('|'));
        return inTable_;
    }

    /// Whether the rule makes a heading of the one line above it.
    bool underlines(std::string_view rule) {
        const bool isUnderline = rule.find_first_not_of(rule.front()) == std::string_view::npos &&
                                 (rule.front() == '=' || rule.front() == '-');
        if (!isUnderline || blockLines_ != 1 || inList_ || wasBlank_) return false;
        addHeading(block_);
        block_.clear();
        blockLines_ = 0;
        return true;
    }

    void continueBlock(std::string_view text) {
        if (block_.empty() && wasBlank_) inList_ = false;
        if (!block_.empty()) block_ += ' ';
        block_ += text;
        ++blockLines_;
    }

    void addHeading(std::string_view text) {
        std::string heading = clipped(trimmed(withoutInlineMarkup(text)), kLongestHeading);
        while (heading.ends_with('#') || heading.ends_with(' ') || heading.ends_with(':'))
            heading.pop_back();
        if (hasWord(heading)) document_.headings.push_back(std::move(heading));
        inList_ = false;
    }

    void endBlock() {
        bool first = true;
        for (std::string& sentence : splitSentences(withoutInlineMarkup(block_))) {
            if (!hasWord(sentence)) continue;
            document_.sentences.push_back({std::move(sentence), first});
            first = false;
        }
        block_.clear();
        blockLines_ = 0;
    }

    Document document_;
    std::string block_;
    std::string_view fence_;
    std::size_t blockLines_ = 0;
    bool inFence_ = false;
    bool inSetInCode_ = false;
    bool inComment_ = false;
    bool inList_ = false;
    bool inTable_ = false;
    bool inMailHead_ = false;
    bool inSignature_ = false;
    bool wasBlank_ = true;
};

Document readLines(const Lines& lines) {
    DocumentReader reader;
    for (std::size_t i = frontMatterLength(lines); i < lines.size(); ++i) {
        reader.line(lines[i], i + 1 < lines.size() ? lines[i + 1] : std::string_view{});
    }
    return reader.finish();
}

Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

} // namespace

Document readDocument(std::string_view text) {
    const Lines lines = linesOf(text);
    if (!isSourceCode(lines)) return readLines(lines);
    const std::string comments = commentsOf(lines);
    return readLines(linesOf(comments));
}

} // namespace vorq::gateway
