#include "engine/embedded/rewriting/ListForms.h"

#include "engine/embedded/document/SentenceSplitter.h"
#include "engine/embedded/rewriting/TextPieces.h"
#include "engine/embedded/words/LanguageData.h"
#include "support/Utf8.h"

#include <utility>
#include <vector>

namespace vorq::gateway {
namespace {

std::string_view blankOf(Language language) {
    return dataOf(language).hasBlanks ? " " : "";
}

void addBullet(std::string& list, std::string_view item) {
    if (!list.empty()) list += '\n';
    list.append("- ").append(trimmed(item));
}

void addSentences(std::string& list, std::string_view paragraph, SentenceSplitter& splitter,
                  Language language) {
    std::string sentence;
    // What is very long comes in pieces.
    splitter.split(paragraph, [&](std::string_view piece) {
        if (!sentence.empty()) sentence += blankOf(language);
        sentence += piece;
        if (!closesSentence(piece)) return;
        addBullet(list, sentence);
        sentence.clear();
    });
    if (!sentence.empty()) addBullet(list, sentence);
}

/// A list item as a sentence.
std::string sentenceOf(std::string_view item, Language language) {
    std::string sentence = withCapital(trimmed(item));
    while (sentence.ends_with(',') || sentence.ends_with(';'))
        sentence.pop_back();
    if (!closesSentence(sentence)) sentence += dataOf(language).hasBlanks ? "." : "。";
    return sentence;
}

void append(std::string& paragraph, std::string_view text, Language language) {
    if (!paragraph.empty()) paragraph += blankOf(language);
    paragraph += text;
}

} // namespace

std::string toBullets(std::string_view text, Language language) {
    std::string list;
    std::string paragraph;
    SentenceTail tail; // of the paragraph
    SentenceSplitter splitter(language);
    const auto flush = [&] {
        if (!paragraph.empty()) addSentences(list, paragraph, splitter, language);
        paragraph.clear();
        tail = {};
    };
    std::string_view before;
    for (const std::string_view line : linesOf(text)) {
        const std::size_t marker = listMarkerLength(line, std::exchange(before, line));
        const std::string_view content = trimmed(line.substr(marker));
        // A line that ends no sentence may be wrapped.
        if (marker > 0 || content.empty() || tail.closes()) flush();
        if (marker > 0) {
            addBullet(list, content);
        } else if (!content.empty()) {
            const std::size_t end = paragraph.size();
            append(paragraph, content, language);
            tail.add(std::string_view(paragraph).substr(end));
        }
    }
    flush();
    return list;
}

std::string toSentences(std::string_view text, Language language) {
    const std::vector<std::string_view> lines = linesOf(text);
    const auto markerAt = [&lines](std::size_t i) {
        return listMarkerLength(lines[i], i > 0 ? lines[i - 1] : std::string_view());
    };
    bool hasList = false;
    for (std::size_t i = 0; i < lines.size(); ++i)
        hasList = hasList || markerAt(i) > 0;
    std::string result;
    std::string paragraph;
    bool isInList = false;
    const auto flush = [&] {
        if (paragraph.empty()) return;
        if (!result.empty()) result += "\n\n";
        result += paragraph;
        paragraph.clear();
    };
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t marker = markerAt(i);
        const std::string_view content = trimmed(lines[i].substr(marker));
        if (content.empty()) continue;
        // What announces a list stays with it; what follows one does not.
        if (hasList && marker == 0 && isInList) flush();
        append(paragraph, marker > 0 ? sentenceOf(content, language) : std::string(content),
               language);
        isInList = marker > 0;
    }
    flush();
    return result;
}

} // namespace vorq::gateway
