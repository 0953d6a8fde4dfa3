#include "engine/embedded/search/QuestionKind.h"

#include "engine/embedded/words/LanguageData.h"
#include "engine/embedded/words/PhraseList.h"
#include "support/Utf8.h"

#include <array>
#include <optional>
#include <string>
#include <utility>

namespace vorq::gateway {

Expectation expectationOf(std::string_view question, Language language) {
    constexpr std::size_t longest = 600; // bytes
    const std::string text = lowered(clipped(question, longest));
    const LanguageData& data = dataOf(language);
    const QuestionWords& words = data.question;
    const std::array<std::pair<QuestionKind, std::string_view>, 8> kinds{{
        {QuestionKind::Time, words.time},
        {QuestionKind::Place, words.place},
        {QuestionKind::Quantity, words.quantity},
        {QuestionKind::Reason, words.reason},
        {QuestionKind::Person, words.person},
        {QuestionKind::Definition, words.definition},
        {QuestionKind::Permission, words.permission},
        {QuestionKind::Other, words.other},
    }};
    Expectation expected;
    // The word that asks comes first, as in "What happens when …". In Chinese and Japanese it
    // stands anywhere, and the kinds that are told by words of their own go before the others.
    std::optional<PhrasePlace> best;
    for (const auto& [kind, list] : kinds) {
        const std::optional<PhrasePlace> place = firstPhrase(text, list);
        if (!place) continue;
        const bool isEarlier =
            best && (place->offset < best->offset ||
                     (place->offset == best->offset && place->length > best->length));
        if (!best || (data.hasBlanks && isEarlier)) best = place, expected.kind = kind;
    }
    if (hasPhrase(text, words.profession)) expected.kind = QuestionKind::Definition;
    expected.isNegative = hasPhrase(text, data.answer.negation);
    expected.isMoney = hasPhrase(text, words.money);
    // "What does it cost?"
    if (expected.isMoney && expected.kind == QuestionKind::Other) {
        expected.kind = QuestionKind::Quantity;
    }
    expected.isDuration = hasPhrase(text, words.duration);
    expected.isLength = hasPhrase(text, words.length);
    expected.isFrequency = hasPhrase(text, words.frequency);
    return expected;
}

} // namespace vorq::gateway
