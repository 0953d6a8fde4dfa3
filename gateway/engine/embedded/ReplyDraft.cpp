#include "engine/embedded/ReplyDraft.h"

#include "engine/embedded/PromptIntent.h"
#include "engine/embedded/TextIndex.h"
#include "support/Filled.h"
#include "support/Utf8.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>

namespace vorq::gateway {
namespace {

constexpr std::size_t kLongestQuote = 420;
constexpr std::size_t kLongestTitle = 90;
constexpr std::size_t kMostDates = 8;
constexpr std::size_t kShortestMaterial = 200; // bytes
constexpr std::string_view kOwnWordsNote =
    "\n\n*These sentences are taken from the text as they stand; no language model is connected.*";
constexpr std::string_view kNoModel =
    "No language model is connected to this gateway, so I cannot answer that by myself. Select or "
    "attach a text, and I can pick out its key sentences and key terms, find the sentences that "
    "answer your question, and make flashcards or a quiz from it.";
constexpr std::string_view kSmallTalk =
    "I am here, though no language model is connected to this gateway. Select or attach a text, "
    "and ask for its key sentences or key terms, or ask it a question.";
constexpr std::string_view kNoWriting =
    "Writing or rewriting needs a language model, and none is connected to this gateway.";
constexpr std::string_view kNoSight =
    "Looking at a picture needs a language model that can see, and none is connected to this "
    "gateway. I can work with text that you select or attach.";
constexpr std::string_view kNoSentences = "I found no sentences in this text. Without a language "
                                          "model I can only pick sentences out, and "
                                          "not explain code, tables or symbols.";

std::string quoted(const TextIndex& index, std::size_t sentence) {
    return clipped(index.sentences()[sentence].text, kLongestQuote);
}

/// Quotes in the given order, each sentence once.
std::vector<std::string> quotes(const TextIndex& index, const std::vector<std::size_t>& chosen) {
    std::vector<std::string> list;
    std::unordered_set<std::string> seen;
    for (const std::size_t sentence : chosen) {
        std::string text = quoted(index, sentence);
        if (seen.insert(text).second) list.push_back(std::move(text));
    }
    return list;
}

bool isEnglish(const TextIndex& index) {
    constexpr std::size_t looked = 40;
    const std::size_t most = std::min(index.sentences().size(), looked);
    for (std::size_t i = 0; i < most; ++i) {
        for (const Word& word : index.wordsIn(i)) {
            if (word.key == "the" || word.key == "and" || word.key == "of") return true;
        }
    }
    return false;
}

std::string titleOf(const TextIndex& index, const std::vector<std::string>& terms) {
    if (!index.headings().empty()) return clipped(index.headings().front(), kLongestTitle);
    const std::vector<Sentence>& sentences = index.sentences();
    constexpr std::string_view ends = ".!?:;,";
    if (sentences.size() > 1 && sentences[1].startsBlock &&
        sentences[0].text.size() <= kLongestTitle && !ends.contains(sentences[0].text.back())) {
        return sentences[0].text;
    }
    if (terms.empty()) return clipped(sentences.front().text, 60);
    std::string title = terms.front();
    if (terms.size() > 1 && sentences.size() > 1)
        title += (isEnglish(index) ? " and " : ", ") + terms[1];
    if (title[0] >= 'a' && title[0] <= 'z') title[0] = static_cast<char>(title[0] - 'a' + 'A');
    return clipped(title, kLongestTitle);
}

std::size_t usualCount(const TextIndex& index) {
    return std::clamp<std::size_t>(3 + index.sentences().size() / 12, 3, 7);
}

std::string joined(const std::vector<std::string>& words) {
    std::string list;
    for (const std::string& word : words)
        list += (list.empty() ? "" : ", ") + word;
    return list;
}

std::string aboutLabel(const std::string& term) {
    return filled("What does it say about {}?", term);
}

void addTerms(ReplyDraft& draft, const std::vector<std::string>& terms) {
    if (!terms.empty()) draft.pieces.push_back("\n\n**Key terms:** " + joined(terms));
}

void addBullets(ReplyDraft& draft, const std::vector<std::string>& lines) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        draft.pieces.push_back((i == 0 ? "\n\n- " : "\n- ") + lines[i]);
    }
}

ReplyDraft onePiece(std::string_view text) {
    return {.pieces = {std::string(text)}, .followUp = std::nullopt};
}

ReplyDraft draftSummary(const TextIndex& index, std::size_t count, bool deep) {
    ReplyDraft draft = onePiece("**Key sentences**");
    addBullets(draft, quotes(index, index.keySentences(count)));
    if (deep) addTerms(draft, index.keyTerms(8));
    draft.pieces.emplace_back(kOwnWordsNote);
    return draft;
}

ReplyDraft draftTerms(const TextIndex& index, std::size_t count) {
    ReplyDraft draft = onePiece("**Key terms**");
    std::vector<std::string> lines;
    for (const std::string& term : index.keyTerms(count)) {
        const std::vector<std::size_t> sentence = index.matching(term, 1);
        lines.push_back(sentence.empty()
                            ? filled("**{}**", term)
                            : filled("**{}**: {}", term, quoted(index, sentence.front())));
    }
    addBullets(draft, lines);
    draft.pieces.emplace_back(kOwnWordsNote);
    return draft;
}

ReplyDraft draftQuotes(const std::vector<std::string>& lines, std::string_view opening) {
    ReplyDraft draft = onePiece(opening);
    for (const std::string& line : lines)
        draft.pieces.push_back("\n\n> " + line);
    draft.pieces.emplace_back(kOwnWordsNote);
    return draft;
}

/// What was said before, without greetings, this very prompt and remarks that were no content.
std::string conversationText(const PromptRequest& request) {
    std::vector<ConversationMessage> messages = request.history;
    if (!messages.empty() && messages.back().fromUser) messages.pop_back();
    std::string text;
    for (const ConversationMessage& message : messages) {
        std::string content = message.content;
        if (const std::size_t note = content.find(kOwnWordsNote); note != std::string::npos) {
            content.resize(note);
        }
        const std::string_view plain = trimmed(content);
        const bool isRemark = plain.starts_with("Hello 👋") || plain.starts_with("Attached: ") ||
                              plain.starts_with(kNoModel) || plain.starts_with(kNoWriting) ||
                              plain.starts_with(kNoSight) || plain.starts_with(kSmallTalk) ||
                              plain.starts_with(kNoSentences);
        // Short words of the user are earlier questions, which answer nothing.
        const bool isQuestion = message.fromUser && plain.size() < kShortestMaterial;
        if (!isRemark && !isQuestion) text.append(plain).append("\n\n");
    }
    return text;
}

ReplyDraft answerFrom(const TextIndex& index, const PromptRequest& request,
                      const PromptIntent& intent) {
    using Kind = PromptIntent::Kind;
    const std::size_t usual = usualCount(index) + (request.deepResearch ? 3 : 0);
    if (intent.kind == Kind::Summary) {
        return draftSummary(index, intent.count.value_or(usual), request.deepResearch);
    }
    if (intent.kind == Kind::KeyTerms) return draftTerms(index, intent.count.value_or(8));
    const std::size_t most = intent.count.value_or(request.deepResearch ? 8 : 4);
    const QuestionKind kind = questionKind(intent.request);
    const std::vector<std::size_t> found = index.matching(intent.subject, kind, most);
    if (!found.empty()) return draftQuotes(quotes(index, found), "The text says:");
    if (intent.subject.empty()) {
        const std::vector<std::size_t> held =
            index.holding(kind, intent.count.value_or(kMostDates));
        const bool isTime = kind == QuestionKind::Time;
        if (!held.empty()) {
            return draftQuotes(quotes(index, held), isTime ? "The text gives these dates:"
                                                           : "The text gives these numbers:");
        }
    }
    ReplyDraft draft =
        onePiece("I found no sentence about that in the text. These say most in it:");
    addBullets(draft, quotes(index, index.keySentences(3)));
    draft.pieces.emplace_back(kOwnWordsNote);
    return draft;
}

/// What the conversation says about an excerpt of it, beyond the excerpt itself.
std::optional<ReplyDraft> goDeeper(const PromptRequest& request, const PromptIntent& intent) {
    std::unordered_set<std::string> known;
    for (Sentence& sentence : readDocument(request.selectedText).sentences) {
        known.insert(std::move(sentence.text));
    }
    Document document = readDocument(conversationText(request));
    std::erase_if(document.sentences,
                  [&](const Sentence& sentence) { return known.contains(sentence.text); });
    const TextIndex index(std::move(document));
    const std::vector<std::size_t> found =
        index.matching(request.selectedText + "\n" + intent.request, 6);
    if (found.empty()) return std::nullopt;
    return draftQuotes(quotes(index, found), "More about this, from our conversation:");
}

/// A prompt that comes without a text, answered from what was said before if that helps.
ReplyDraft answerFromConversation(const PromptRequest& request, const PromptIntent& intent) {
    const TextIndex index(readDocument(conversationText(request)));
    if (intent.kind == PromptIntent::Kind::Question) {
        const std::vector<std::size_t> found =
            index.matching(intent.subject, questionKind(intent.request), intent.count.value_or(4));
        if (!found.empty()) return draftQuotes(quotes(index, found), "From our conversation:");
    } else if (!index.sentences().empty()) {
        return answerFrom(index, request, intent);
    }
    return onePiece(request.image.empty() ? kNoModel : kNoSight);
}

} // namespace

std::string ReplyDraft::text() const {
    return std::accumulate(pieces.begin(), pieces.end(), std::string());
}

ReplyDraft draftAnalysis(std::string_view text) {
    const TextIndex index(readDocument(text));
    if (index.sentences().empty()) return onePiece(kNoSentences);
    const std::vector<std::string> terms = index.keyTerms(8);
    ReplyDraft draft = onePiece("## " + titleOf(index, terms));
    addBullets(draft, quotes(index, index.keySentences(usualCount(index))));
    addTerms(draft, terms);
    draft.pieces.emplace_back(kOwnWordsNote);
    FollowUp followUp{.question = "What would you like to look up in it?", .labels = {}};
    for (std::size_t i = 0; i < std::min<std::size_t>(terms.size(), 2); ++i) {
        followUp.labels.push_back(aboutLabel(terms[i]));
    }
    followUp.labels.emplace_back("Summarize it in three sentences");
    draft.followUp = std::move(followUp);
    return draft;
}

ReplyDraft draftReply(const PromptRequest& request) {
    const PromptIntent intent = readPrompt(request.prompt);
    // What is asked for whole comes from a tool of the client, whose prompts are instructions only.
    if (!request.whole && trimmed(request.selectedText).empty()) {
        if (PromptWithText parts = apart(intent.request); !parts.text.empty()) {
            PromptRequest other = request;
            other.prompt = std::move(parts.prompt);
            other.selectedText = std::move(parts.text);
            return draftReply(other);
        }
    }
    if (intent.kind == PromptIntent::Kind::SmallTalk) return onePiece(kSmallTalk);
    if (intent.kind == PromptIntent::Kind::Writing) {
        // Taken whole, the sentence would be offered as the new wording of the user's text.
        if (request.whole) throw EngineError(422, std::string(kNoWriting));
        return onePiece(std::string(kNoWriting) +
                        " I can pick out key sentences and terms, find the sentences that answer a "
                        "question, and make flashcards or a quiz.");
    }
    if (trimmed(request.selectedText).empty()) return answerFromConversation(request, intent);
    if (intent.goesDeeper) {
        if (std::optional<ReplyDraft> draft = goDeeper(request, intent)) return *draft;
    }
    const TextIndex index(readDocument(request.selectedText));
    if (index.sentences().empty()) return onePiece(kNoSentences);
    return answerFrom(index, request, intent);
}

} // namespace vorq::gateway
