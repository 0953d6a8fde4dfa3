#include "engine/embedded/document/Document.h"

#include "engine/embedded/document/LineLayout.h"
#include "engine/embedded/document/LineShape.h"
#include "engine/embedded/document/SentenceSplitter.h"
#include "engine/embedded/words/Lexicon.h"
#include "support/Utf8.h"

#include <algorithm>
#include <utility>

namespace vorq::gateway {
namespace {

constexpr std::size_t kLongestHeading = 200;
constexpr std::size_t kLookedAhead = 400; // bytes

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

/// The bytes of the settings that some Markdown files begin with, 0 if there are none.
std::size_t frontMatterLength(std::string_view text) {
    constexpr int longest = 60; // lines
    std::string_view rest = text;
    std::string_view line;
    if (!nextLine(rest, line) || line != "---") return 0;
    for (int i = 1; i < longest && nextLine(rest, line); ++i) {
        if (line == "---" || line == "...") return text.size() - rest.size();
        const bool isSetting = line.contains(':') || line.starts_with(' ') ||
                               line.starts_with('-') || line.starts_with('#');
        if (!isSetting) return 0;
    }
    return 0;
}

/// Gathers lines into blocks and blocks into sentences.
class DocumentReader {
  public:
    DocumentReader(std::string_view text, Language language)
        : layout_(text, lexiconOf(language)), splitter_(language) {
        document_.language = language;
        document_.text.reserve(text.size());
    }

    /// `next` is the line behind it, empty at the end, and `rest` the text behind that.
    void line(std::string_view raw, std::string_view next, std::string_view rest) {
        rest_ = rest;
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
        } else if (standsApart(text, trimmed(next))) {
            // Neither a sentence nor a part of one.
        } else if (const std::size_t bullet = listMarker(text); bullet > 0) {
            endBlock();
            continueBlock(trimmed(text.substr(bullet)));
            inList_ = true;
        } else {
            continueBlock(text);
        }
        wasBlank_ = text.empty();
        isFirst_ = isFirst_ && text.empty();
    }

    Document finish() {
        endBlock();
        dropSignature();
        dropSender();
        document_.text.shrink_to_fit();
        document_.sentences.shrink_to_fit();
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
        if (!line.starts_with('>') && layout_.isClosing(text)) {
            endBlock();
            inSignature_ = true;
            signedAt_ = document_.sentences.size();
        }
        const bool signs = inSignature_ && !line.empty() && !line.starts_with('>');
        inSignature_ = signs;
        const bool isSubject = isFirst_ && next.empty() && !mailSubject(text).empty();
        const bool isHead = isMailHeader(text) && (inMailHead_ || isMailHeader(next) || isSubject);
        inMailHead_ = isHead;
        if (!signs && !isHead && !isQuotationLine(text)) return false;
        endBlock();
        if (!signs) dropSignature();
        isFirst_ = false;
        wasBlank_ = true;
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

    /// Titles and headings without any mark, and greetings.
    bool standsApart(std::string_view text, std::string_view next) {
        if (layout_.isGreeting(text)) {
            endBlock();
            isLetter_ = true;
            return true;
        }
        const bool isTitle = isFirst_ && layout_.isTitle(text, next);
        if (!isTitle && !wasBlank_) return false;
        const std::string_view behind = next.empty() ? lineBehind() : next;
        if (behind.empty() || !(isTitle || layout_.isHeading(text, next, behind))) return false;
        endBlock();
        addHeading(trimmed(text.substr(listMarker(text))));
        return true;
    }

    /// The next line that is not empty, if one is near.
    [[nodiscard]] std::string_view lineBehind() const {
        std::string_view rest = rest_.substr(0, kLookedAhead);
        for (std::string_view line; nextLine(rest, line);) {
            if (!trimmed(line).empty()) return trimmed(line);
        }
        return {};
    }

    void continueBlock(std::string_view text) {
        if (block_.empty() && wasBlank_) inList_ = false;
        if (!block_.empty() && !layout_.continues(lastLine_, text)) endBlock();
        if (block_.empty()) label_ = speakerLabel(text);
        const bool isUnspaced = !block_.empty() && !needsBlank(block_, text);
        if (!block_.empty() && !isUnspaced) block_ += ' ';
        block_ += text;
        lastLine_ = text;
        ++blockLines_;
    }

    /// Chinese and Japanese have no blank where a line was broken.
    static bool needsBlank(std::string_view before, std::string_view line) {
        const std::size_t last = before.size() >= 3 ? before.size() - 3 : 0;
        const auto isUnspaced = [](char32_t c) {
            return isHan(c) || isHiragana(c) || isKatakana(c) || (c >= 0x3001 && c <= 0x3003);
        };
        return !isUnspaced(decodeAt(before, last).value) || !isUnspaced(decodeAt(line, 0).value);
    }

    void addHeading(std::string_view text) {
        std::string heading = clipped(trimmed(withoutInlineMarkup(text)), kLongestHeading);
        while (heading.ends_with('#') || heading.ends_with(' ') || heading.ends_with(':'))
            heading.pop_back();
        if (heading.ends_with("：")) heading.resize(heading.size() - 3);
        inList_ = false;
        if (!hasWord(heading)) return;
        if (endsQuestion(heading)) {
            addSentence(heading, true);
            return;
        }
        document_.headings.push_back(std::move(heading));
    }

    void addSentence(std::string_view sentence, bool isFirst) {
        Sentence entry;
        entry.offset = static_cast<std::uint32_t>(document_.text.size());
        entry.length = static_cast<std::uint32_t>(sentence.size());
        entry.startsBlock = isFirst;
        entry.isQuestion = endsQuestion(sentence);
        if (isFirst && label_ < sentence.size()) entry.label = static_cast<std::uint16_t>(label_);
        if (!document_.headings.empty()) {
            entry.heading = static_cast<std::uint32_t>(document_.headings.size() - 1);
        }
        document_.text += sentence;
        document_.sentences.push_back(entry);
        label_ = 0;
    }

    void endBlock() {
        bool first = true;
        if (!block_.empty()) {
            splitter_.split(withoutInlineMarkup(block_), [&](std::string_view sentence) {
                if (!hasWord(sentence)) return;
                addSentence(sentence, first);
                first = false;
            });
        }
        block_.clear();
        label_ = 0;
        blockLines_ = 0;
    }

    /// What stands behind the closing words of a mail, if all of it is names and numbers.
    void dropSignature() {
        constexpr std::size_t longest = 6;
        const std::size_t from = std::exchange(signedAt_, kUnsigned);
        if (from == kUnsigned || document_.sentences.size() > from + longest) return;
        for (std::size_t i = from; i < document_.sentences.size(); ++i) {
            if (endsSentence(document_.textOf(document_.sentences[i]))) return;
        }
        document_.sentences.resize(from);
    }

    /// The name alone below a letter without closing words.
    void dropSender() {
        constexpr std::size_t longest = 40; // bytes
        if (!isLetter_ || document_.sentences.size() < 2) return;
        const Sentence& last = document_.sentences.back();
        const Sentence& before = document_.sentences[document_.sentences.size() - 2];
        const bool isName = last.startsBlock && last.length <= longest &&
                            !endsSentence(document_.textOf(last)) &&
                            endsSentence(document_.textOf(before));
        if (isName) document_.sentences.pop_back();
    }

    static constexpr std::size_t kUnsigned = static_cast<std::size_t>(-1);

    Document document_;
    LineLayout layout_;
    SentenceSplitter splitter_;
    std::string block_;
    std::string lastLine_;
    std::string_view fence_;
    std::string_view rest_;
    std::size_t blockLines_ = 0;
    std::size_t label_ = 0;
    std::size_t signedAt_ = kUnsigned;
    bool inFence_ = false;
    bool inSetInCode_ = false;
    bool inComment_ = false;
    bool inList_ = false;
    bool inTable_ = false;
    bool inMailHead_ = false;
    bool inSignature_ = false;
    bool wasBlank_ = true;
    bool isFirst_ = true;
    bool isLetter_ = false;
};

Document readLines(std::string_view text) {
    text.remove_prefix(frontMatterLength(text));
    DocumentReader reader(text, languageOf(text));
    std::string_view line;
    bool hasLine = nextLine(text, line);
    while (hasLine) {
        std::string_view next;
        const bool hasNext = nextLine(text, next);
        reader.line(line, next, text);
        line = next;
        hasLine = hasNext;
    }
    return reader.finish();
}

} // namespace

Document readDocument(std::string_view text) {
    return isSourceCode(text) ? readLines(commentsOf(text)) : readLines(text);
}

} // namespace vorq::gateway
