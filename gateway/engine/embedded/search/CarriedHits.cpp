#include "engine/embedded/search/CarriedHits.h"

#include "support/Utf8.h"

#include <algorithm>

namespace vorq::gateway {
namespace {

// How much of a word counts that stands only …
constexpr double kInHeading = 0.5;         // in the heading
constexpr double kBeforeReply = 0.6;       // in what a chat's remark may reply to
constexpr double kBeforeBeginning = 0.75;  // before a sentence that begins with "she" or "but"
constexpr double kBeforeInside = 0.65;     // before one that has "she" or "it" anywhere
constexpr double kBeforeDropped = 0.55;    // before one whose verb may stand for a pronoun
constexpr double kBeforeOther = 0.2;       // before any other
constexpr double kAcrossParagraphs = 0.85; // of that, if a paragraph ended between them
// What stays of it after each sentence, by whether that one went on about it.
constexpr double kStays = 0.85;
constexpr double kFades = 0.6;
constexpr double kFadesAcrossParagraphs = 0.75;
// Of the score of a sentence that names nothing of what is asked for.
constexpr double kPronounOnly = 0.9; // but by a pronoun
constexpr double kContextOnly = 0.75;
constexpr double kForgotten = 0.05; // what has faded to less is gone

void borrow(QueryTerms::Hits& hits, const QueryTerms::Hits& lender, double share) {
    for (std::size_t k = 0; k < lender.size(); ++k)
        hits[k] = std::max(hits[k], std::min(1.0, lender[k]) * share);
}

} // namespace

void CarriedHits::openSection(std::size_t sentence) {
    const std::uint32_t heading = m_index.sentences()[sentence].heading;
    if (heading == m_heading) return;
    m_heading = heading;
    m_fromHeading = m_terms.hitsIn(m_index.headings()[heading]);
    m_carried.clear();
}

/// Whether the sentence speaks of somebody or something that it does not name.
CarriedHits::Link CarriedHits::linkOf(std::size_t sentence) const {
    const Lexicon& lexicon = m_index.lexicon();
    bool isFirst = true;
    bool namesSomebody = false;
    bool isInside = false;
    for (const Word& word : m_index.wordsIn(sentence)) {
        if (word.isLabel) continue;
        if (isFirst && lexicon.pronouns.contains(lowered(m_index.surface(sentence, word)))) {
            return Link::Beginning;
        }
        isInside = isInside || word.isPersonal;
        namesSomebody = namesSomebody || (!isFirst && word.isCapitalised && word.isContent);
        isFirst = false;
    }
    if (isInside) return Link::Inside;
    return lexicon.data.dropsSubjects && !namesSomebody ? Link::Dropped : Link::None;
}

double CarriedHits::share(std::size_t sentence, Link link) const {
    if (m_index.sentences()[sentence].label > 0) return kBeforeReply;
    switch (link) {
    case Link::Beginning:
        return kBeforeBeginning;
    case Link::Inside:
        return kBeforeInside;
    case Link::Dropped:
        return kBeforeDropped;
    case Link::None:
        break;
    }
    return kBeforeOther;
}

CarriedHits::Result CarriedHits::next(std::size_t sentence) {
    openSection(sentence);
    const QueryTerms::Hits own = m_terms.hitsIn(sentence);
    m_carried.resize(own.size(), 0);
    Result result{.hits = own};
    borrow(result.hits, m_fromHeading, kInHeading);
    // Most sentences of a long text stand far from all that the question names.
    const auto isHit = [](double hit) { return hit > 0; };
    const Link link = std::ranges::any_of(m_carried, isHit) ? linkOf(sentence) : Link::None;
    const bool hasPronoun = link == Link::Inside || link == Link::Beginning;
    if (std::ranges::none_of(own, isHit)) result.share = hasPronoun ? kPronounOnly : kContextOnly;
    const bool startsBlock = m_index.sentences()[sentence].startsBlock;
    borrow(result.hits, m_carried, share(sentence, link) * (startsBlock ? kAcrossParagraphs : 1));
    const double fade =
        (link == Link::None ? kFades : kStays) * (startsBlock ? kFadesAcrossParagraphs : 1);
    for (std::size_t k = 0; k < own.size(); ++k) {
        const double rest = m_carried[k] * fade;
        m_carried[k] = std::max(std::min(1.0, own[k]), rest < kForgotten ? 0 : rest);
    }
    return result;
}

} // namespace vorq::gateway
