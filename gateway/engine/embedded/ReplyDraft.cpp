#include "engine/embedded/ReplyDraft.h"

#include "engine/embedded/PromptIntent.h"
#include "engine/embedded/rewriting/RuleRewrite.h"
#include "engine/embedded/search/KeyTerms.h"
#include "engine/embedded/search/SentenceSearch.h"
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
constexpr std::string_view kNoModel =
    "No language model is connected to this gateway, so I cannot answer that by myself. Select or "
    "attach a text, and I can pick out its key sentences and key terms, find the sentences that "
    "answer your question, and make flashcards or a quiz from it.";
constexpr std::string_view kSmallTalk =
    "I am here, though no language model is connected to this gateway. Select or attach a text, "
    "and ask for its key sentences or key terms, or ask it a question.";
constexpr std::string_view kNoSight =
    "Looking at a picture needs a language model that can see, and none is connected to this "
    "gateway. I can work with text that you select or attach.";
constexpr std::string_view kNoSentences = "I found no sentences in this text. Without a language "
                                          "model I can only pick sentences out, and "
                                          "not explain code, tables or symbols.";

const Phrases& phrasesFor(const TextIndex& index) {
    return index.lexicon().data.phrases;
}

std::string quoted(const TextIndex& index, std::size_t sentence) {
    return clipped(index.text(sentence), kLongestQuote);
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

/// The first heading; without one, what the text speaks of more than once; else how it begins.
std::string titleOf(const TextIndex& index, const std::vector<KeyTerm>& terms) {
    constexpr std::size_t longestBeginning = 60; // bytes
    if (!index.headings().empty()) return clipped(index.headings().front(), kLongestTitle);
    const auto isRepeated = [&](std::size_t i) {
        return i < terms.size() && terms[i].occurrences > 1;
    };
    std::string title;
    if (isRepeated(0)) {
        title = terms[0].text;
        if (isRepeated(1)) title += std::string(phrasesFor(index).conjunction) + terms[1].text;
    } else {
        title = clipped(index.text(0).substr(index.sentences()[0].label), longestBeginning);
        while (title.ends_with('.') || title.ends_with(':') || title.ends_with(','))
            title.pop_back();
    }
    const std::string_view first = std::string_view(title).substr(0, decodeAt(title, 0).length);
    title.replace(0, first.size(), raised(first));
    return clipped(title, kLongestTitle);
}

std::size_t usualCount(const TextIndex& index) {
    return std::clamp<std::size_t>(3 + index.sentences().size() / 12, 3, 7);
}

std::string joined(const std::vector<KeyTerm>& terms, std::string_view separator) {
    std::string list;
    for (const KeyTerm& term : terms)
        list += (list.empty() ? std::string() : std::string(separator)) + term.text;
    return list;
}

void addTerms(ReplyDraft& draft, const TextIndex& index, const std::vector<KeyTerm>& terms) {
    if (terms.empty()) return;
    const Phrases& phrases = phrasesFor(index);
    const std::string_view heading =
        phrases.keyTerms.substr(0, phrases.keyTerms.size() - std::string_view("**").size());
    const bool isUnspaced = !index.lexicon().data.hasBlanks;
    draft.pieces.push_back("\n\n" + std::string(heading) + (isUnspaced ? "：** " : ":** ") +
                           joined(terms, phrases.separator));
}

void addNote(ReplyDraft& draft, const TextIndex& index) {
    draft.pieces.push_back("\n\n" + std::string(phrasesFor(index).ownWordsNote));
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
    ReplyDraft draft = onePiece(phrasesFor(index).keySentences);
    addBullets(draft, quotes(index, index.keySentences(count)));
    if (deep) addTerms(draft, index, keyTerms(index, WordClasses(index), 8));
    addNote(draft, index);
    return draft;
}

ReplyDraft draftTerms(const TextIndex& index, std::size_t count) {
    ReplyDraft draft = onePiece(phrasesFor(index).keyTerms);
    std::vector<std::string> lines;
    for (const auto& [term, occurrences] : keyTerms(index, WordClasses(index), count)) {
        const std::vector<std::size_t> sentence =
            findSentences(index, {.subject = term, .expected = {}, .request = {}}, 1);
        lines.push_back(sentence.empty()
                            ? filled("**{}**", term)
                            : filled("**{}**: {}", term, quoted(index, sentence.front())));
    }
    addBullets(draft, lines);
    addNote(draft, index);
    return draft;
}

ReplyDraft draftQuotes(const TextIndex& index, const std::vector<std::size_t>& sentences,
                       std::string_view opening) {
    ReplyDraft draft = onePiece(opening);
    for (const std::string& line : quotes(index, sentences))
        draft.pieces.push_back("\n\n> " + line);
    addNote(draft, index);
    return draft;
}

/// The reply without the note at its end, in whatever language.
std::string_view withoutNote(std::string_view reply) {
    for (std::size_t i = 0; i <= static_cast<std::size_t>(Language::Other); ++i) {
        const std::string_view note = dataOf(static_cast<Language>(i)).phrases.ownWordsNote;
        if (const std::size_t at = reply.find(note); at != std::string_view::npos) {
            return reply.substr(0, at);
        }
    }
    return reply;
}

/// What was said before, without greetings, this very prompt and remarks that were no content.
std::string conversationText(const PromptRequest& request) {
    std::vector<ConversationMessage> messages = request.history;
    if (!messages.empty() && messages.back().fromUser) messages.pop_back();
    std::string text;
    for (const ConversationMessage& message : messages) {
        const std::string_view plain = trimmed(withoutNote(message.content));
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
    const Phrases& phrases = phrasesFor(index);
    const std::vector<std::size_t> found = findSentences(
        index, {.subject = intent.subject, .expected = intent.expected, .request = intent.request},
        most);
    if (!found.empty()) return draftQuotes(index, found, phrases.textSays);
    if (intent.subject.empty()) {
        const std::vector<std::size_t> held =
            sentencesHolding(index, intent.expected.kind, intent.count.value_or(kMostDates));
        const bool isTime = intent.expected.kind == QuestionKind::Time;
        if (!held.empty()) {
            return draftQuotes(index, held, isTime ? phrases.dates : phrases.numbers);
        }
    }
    ReplyDraft draft = onePiece(phrases.foundNothing);
    addBullets(draft, quotes(index, index.keySentences(3)));
    addNote(draft, index);
    return draft;
}

/// What the conversation says about an excerpt of it, beyond the excerpt itself.
std::optional<ReplyDraft> goDeeper(const PromptRequest& request, const PromptIntent& intent) {
    std::unordered_set<std::string> known;
    const Document excerpt = readDocument(request.selectedText);
    for (const Sentence& sentence : excerpt.sentences)
        known.emplace(excerpt.textOf(sentence));
    Document document = readDocument(conversationText(request));
    std::erase_if(document.sentences, [&](const Sentence& sentence) {
        return known.contains(std::string(document.textOf(sentence)));
    });
    const TextIndex index(std::move(document));
    const std::vector<std::size_t> found =
        findSentences(index, request.selectedText + "\n" + intent.request, 6);
    if (found.empty()) return std::nullopt;
    return draftQuotes(index, found, phrasesFor(index).deeper);
}

/// A prompt that comes without a text, answered from what was said before if that helps.
ReplyDraft answerFromConversation(const PromptRequest& request) {
    const TextIndex index(readDocument(conversationText(request)));
    const PromptIntent intent = readPrompt(request.prompt, index.language());
    if (intent.kind == PromptIntent::Kind::Question) {
        const std::vector<std::size_t> found = findSentences(
            index,
            {.subject = intent.subject, .expected = intent.expected, .request = intent.request},
            intent.count.value_or(4));
        if (!found.empty()) return draftQuotes(index, found, phrasesFor(index).fromConversation);
    } else if (!index.sentences().empty()) {
        return answerFrom(index, request, intent);
    }
    return onePiece(request.image.empty() ? kNoModel : kNoSight);
}

/// What rules make of the writer's text. Taken whole, a sentence that says no would be offered as
/// its new wording.
ReplyDraft draftRewrite(const RewritePrompt& prompt, const PromptRequest& request) {
    const auto rewritten = rewrittenByRule(prompt, request.selectedText);
    if (rewritten) return onePiece(*rewritten);
    if (request.whole) throw EngineError(422, std::string(rewritten.error()));
    return onePiece(rewritten.error());
}

} // namespace

std::string ReplyDraft::text() const {
    return std::accumulate(pieces.begin(), pieces.end(), std::string());
}

ReplyDraft draftAnalysis(std::string_view text) {
    const TextIndex index(readDocument(text));
    if (index.sentences().empty()) return onePiece(kNoSentences);
    const Phrases& phrases = phrasesFor(index);
    const std::vector<KeyTerm> terms = keyTerms(index, WordClasses(index), 8);
    ReplyDraft draft = onePiece("## " + titleOf(index, terms));
    addBullets(draft, quotes(index, index.keySentences(usualCount(index))));
    addTerms(draft, index, terms);
    addNote(draft, index);
    FollowUp followUp{.question = std::string(phrases.lookUp), .labels = {}};
    for (std::size_t i = 0; i < std::min<std::size_t>(terms.size(), 2); ++i) {
        followUp.labels.push_back(filled(phrases.about, terms[i].text));
    }
    followUp.labels.emplace_back(phrases.summarize);
    draft.followUp = std::move(followUp);
    return draft;
}

ReplyDraft draftReply(const PromptRequest& request) {
    if (const std::optional<RewritePrompt> prompt = readRewritePrompt(request.prompt))
        return draftRewrite(*prompt, request);
    const PromptIntent intent = readPrompt(request.prompt);
    // What is asked for whole comes from a tool of the client, whose prompts are instructions only.
    if (!request.whole && trimmed(request.selectedText).empty()) {
        if (PromptWithText parts = apart(ownWords(request.prompt)); !parts.text.empty()) {
            PromptRequest other;
            other.image = request.image;
            other.deepResearch = request.deepResearch;
            other.history = request.history;
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
    if (trimmed(request.selectedText).empty()) return answerFromConversation(request);
    if (intent.goesDeeper) {
        if (std::optional<ReplyDraft> draft = goDeeper(request, intent)) return *draft;
    }
    const TextIndex index(readDocument(request.selectedText));
    if (index.sentences().empty()) return onePiece(kNoSentences);
    return answerFrom(index, request, readPrompt(request.prompt, index.language()));
}

} // namespace vorq::gateway
