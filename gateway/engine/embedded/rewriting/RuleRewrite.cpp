#include "engine/embedded/rewriting/RuleRewrite.h"

#include "engine/embedded/rewriting/CaseForms.h"
#include "engine/embedded/rewriting/ListForms.h"
#include "engine/embedded/rewriting/Repairs.h"
#include "engine/embedded/rewriting/Shelter.h"
#include "engine/embedded/rewriting/Shortening.h"
#include "support/Utf8.h"

namespace vorq::gateway {
namespace {

constexpr std::string_view kNoOtherTake =
    "Another version needs a language model, and none is connected to this gateway.";
constexpr std::string_view kTooLong =
    "Rules change 256 KB of text at most, and more needs a language model, which is not connected "
    "to this gateway.";
constexpr std::string_view kNoOtherWords =
    "Other words need a language model, and none is connected to this gateway.";
constexpr std::string_view kNothingByRule =
    "There is nothing that rules could change here, and more needs a language model, which is not "
    "connected to this gateway.";

template<typename Form>
std::string sheltered(std::string_view text, Language language, Form form) {
    const Shelter shelter(text);
    return shelter.restored(form(shelter.text(), language));
}

std::string byRule(RewriteRule rule, std::string_view text) {
    const Language language = languageOf(text);
    switch (rule) {
    case RewriteRule::Shorten:
        return shortened(text, language);
    case RewriteRule::Repair:
        return repaired(text, language);
    case RewriteRule::ToBullets:
        return toBullets(text, language);
    case RewriteRule::ToSentences:
        return toSentences(text, language);
    case RewriteRule::UpperCase:
        return inUpperCase(text);
    case RewriteRule::LowerCase:
        return inLowerCase(text);
    case RewriteRule::TitleCase:
        return sheltered(text, language, &inTitleCase);
    case RewriteRule::SentenceCase:
        return sheltered(text, language, &inSentenceCase);
    }
    return std::string(text);
}

} // namespace

std::expected<std::string, std::string_view> rewrittenByRule(const RewritePrompt& prompt,
                                                             std::string_view selection) {
    if (prompt.asksForWords) return std::unexpected(kNoOtherWords);
    if (prompt.isAnotherTake) return std::unexpected(kNoOtherTake);
    const std::optional<RewriteRule> rule = ruleOf(prompt.ask);
    if (!rule) return std::unexpected(kNoWriting);
    const std::string_view given = prompt.current.empty() ? selection : prompt.current;
    if (given.size() > kLongestRewrite) return std::unexpected(kTooLong);
    const std::string text = sanitized(given);
    const std::string_view core = trimmed(text);
    std::string rewritten = byRule(*rule, core);
    if (trimmed(rewritten).empty() || rewritten == core) return std::unexpected(kNothingByRule);
    return rewritten;
}

} // namespace vorq::gateway
