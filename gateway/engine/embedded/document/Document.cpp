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
        : m_layout(text, lexiconOf(language)), m_splitter(language) {
        m_document.language = language;
        m_document.text.reserve(text.size());
    }

    /// `next` is the line behind it, empty at the end, and `rest` the text behind that.
    void line(std::string_view raw, std::string_view next, std::string_view rest) {
        m_rest = rest;
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
            m_inList = true;
        } else {
            continueBlock(text);
        }
        m_wasBlank = text.empty();
        m_isFirst = m_isFirst && text.empty();
    }

    Document finish() {
        endBlock();
        dropSignature();
        dropSender();
        m_document.text.shrink_to_fit();
        m_document.sentences.shrink_to_fit();
        return std::move(m_document);
    }

  private:
    /// Fenced code, and code that is set in. Prose that is set in stays.
    bool skipsCode(std::string_view raw) {
        const std::string_view text = trimmed(raw);
        if (startsFence(text) && (!m_inFence || text.starts_with(m_fence))) {
            endBlock();
            m_inFence = !m_inFence;
            m_fence = text.substr(0, 3);
            return true;
        }
        if (m_inFence) return true;
        const bool isSetIn = raw.starts_with("    ") || raw.starts_with('\t');
        const bool begins = m_wasBlank && !m_inList && isStatement(text);
        m_inSetInCode = text.empty() ? m_inSetInCode : isSetIn && (m_inSetInCode || begins);
        return m_inSetInCode && !text.empty();
    }

    bool skipsComment(std::string_view raw) {
        if (!m_inComment && !trimmed(raw).starts_with("<!--")) return false;
        if (!m_inComment) endBlock();
        m_inComment = !raw.contains("-->");
        return true;
    }

    /// The head of a mail, the line above a quoted one, and a signature.
    bool skipsMail(std::string_view line, std::string_view text, std::string_view next) {
        if (line == "--") m_inSignature = true;
        if (!line.starts_with('>') && m_layout.isClosing(text)) {
            endBlock();
            m_inSignature = true;
            m_signedAt = m_document.sentences.size();
        }
        const bool signs = m_inSignature && !line.empty() && !line.starts_with('>');
        m_inSignature = signs;
        const bool isSubject = m_isFirst && next.empty() && !mailSubject(text).empty();
        const bool isHead = isMailHeader(text) && (m_inMailHead || isMailHeader(next) || isSubject);
        m_inMailHead = isHead;
        if (!signs && !isHead && !isQuotationLine(text)) return false;
        endBlock();
        if (!signs) dropSignature();
        m_isFirst = false;
        m_wasBlank = true;
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
        const bool isRow = row && (m_inTable || text.starts_with('|') || isTableRow(next));
        m_inTable = isRow || startsTable || (m_inTable && text.contains('|'));
        return m_inTable;
    }

    /// Whether the rule makes a heading of the one line above it.
    bool underlines(std::string_view rule) {
        const bool isUnderline = rule.find_first_not_of(rule.front()) == std::string_view::npos &&
                                 (rule.front() == '=' || rule.front() == '-');
        if (!isUnderline || m_blockLines != 1 || m_inList || m_wasBlank) return false;
        addHeading(m_block);
        m_block.clear();
        m_blockLines = 0;
        return true;
    }

    /// Titles and headings without any mark, and greetings.
    bool standsApart(std::string_view text, std::string_view next) {
        if (m_layout.isGreeting(text)) {
            endBlock();
            m_isLetter = true;
            return true;
        }
        const bool isTitle = m_isFirst && m_layout.isTitle(text, next);
        if (!isTitle && !m_wasBlank) return false;
        const std::string_view behind = next.empty() ? lineBehind() : next;
        if (behind.empty() || !(isTitle || m_layout.isHeading(text, next, behind))) return false;
        endBlock();
        addHeading(trimmed(text.substr(listMarker(text))));
        return true;
    }

    /// The next line that is not empty, if one is near.
    [[nodiscard]] std::string_view lineBehind() const {
        std::string_view rest = m_rest.substr(0, kLookedAhead);
        for (std::string_view line; nextLine(rest, line);) {
            if (!trimmed(line).empty()) return trimmed(line);
        }
        return {};
    }

    void continueBlock(std::string_view text) {
        if (m_block.empty() && m_wasBlank) m_inList = false;
        if (!m_block.empty() && !m_layout.continues(m_lastLine, text)) endBlock();
        if (m_block.empty()) m_label = speakerLabel(text);
        const bool isUnspaced = !m_block.empty() && !needsBlank(m_block, text);
        if (!m_block.empty() && !isUnspaced) m_block += ' ';
        m_block += text;
        m_lastLine = text;
        ++m_blockLines;
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
        m_inList = false;
        if (!hasWord(heading)) return;
        if (endsQuestion(heading)) {
            addSentence(heading, true);
            return;
        }
        m_document.headings.push_back(std::move(heading));
    }

    void addSentence(std::string_view sentence, bool isFirst) {
        Sentence entry;
        entry.offset = static_cast<std::uint32_t>(m_document.text.size());
        entry.length = static_cast<std::uint32_t>(sentence.size());
        entry.startsBlock = isFirst;
        entry.isQuestion = endsQuestion(sentence);
        if (isFirst && m_label < sentence.size()) entry.label = static_cast<std::uint16_t>(m_label);
        if (!m_document.headings.empty()) {
            entry.heading = static_cast<std::uint32_t>(m_document.headings.size() - 1);
        }
        m_document.text += sentence;
        m_document.sentences.push_back(entry);
        m_label = 0;
    }

    void endBlock() {
        bool first = true;
        if (!m_block.empty()) {
            m_splitter.split(withoutInlineMarkup(m_block), [&](std::string_view sentence) {
                if (!hasWord(sentence)) return;
                addSentence(sentence, first);
                first = false;
            });
        }
        m_block.clear();
        m_label = 0;
        m_blockLines = 0;
    }

    /// What stands behind the closing words of a mail, if all of it is names and numbers.
    void dropSignature() {
        constexpr std::size_t longest = 6;
        const std::size_t from = std::exchange(m_signedAt, kUnsigned);
        if (from == kUnsigned || m_document.sentences.size() > from + longest) return;
        for (std::size_t i = from; i < m_document.sentences.size(); ++i) {
            if (endsSentence(m_document.textOf(m_document.sentences[i]))) return;
        }
        m_document.sentences.resize(from);
    }

    /// The name alone below a letter without closing words.
    void dropSender() {
        constexpr std::size_t longest = 40; // bytes
        if (!m_isLetter || m_document.sentences.size() < 2) return;
        const Sentence& last = m_document.sentences.back();
        const Sentence& before = m_document.sentences[m_document.sentences.size() - 2];
        const bool isName = last.startsBlock && last.length <= longest &&
                            !endsSentence(m_document.textOf(last)) &&
                            endsSentence(m_document.textOf(before));
        if (isName) m_document.sentences.pop_back();
    }

    static constexpr std::size_t kUnsigned = static_cast<std::size_t>(-1);

    Document m_document;
    LineLayout m_layout;
    SentenceSplitter m_splitter;
    std::string m_block;
    std::string m_lastLine;
    std::string_view m_fence;
    std::string_view m_rest;
    std::size_t m_blockLines = 0;
    std::size_t m_label = 0;
    std::size_t m_signedAt = kUnsigned;
    bool m_inFence = false;
    bool m_inSetInCode = false;
    bool m_inComment = false;
    bool m_inList = false;
    bool m_inTable = false;
    bool m_inMailHead = false;
    bool m_inSignature = false;
    bool m_wasBlank = true;
    bool m_isFirst = true;
    bool m_isLetter = false;
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
