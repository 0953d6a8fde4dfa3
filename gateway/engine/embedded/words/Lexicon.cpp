#include "engine/embedded/words/Lexicon.h"

#include "engine/embedded/words/PhraseList.h"

#include <algorithm>
#include <vector>

namespace vorq::gateway {
namespace {

/// Calls `visit` with each word of a list with blanks between them.
template<typename Visit>
void eachWord(std::string_view words, const Visit& visit) {
    while (!words.empty()) {
        const std::size_t blank = std::min(words.find(' '), words.size());
        if (blank > 0) visit(words.substr(0, blank));
        words.remove_prefix(std::min(blank + 1, words.size()));
    }
}

WordSet wordSet(std::string_view words) {
    WordSet set;
    eachWord(words, [&](std::string_view word) { set.insert(word); });
    return set;
}

const LanguageData& otherLanguage() {
    static const LanguageData data{.locale = "en",
                                   .stemmer = "",
                                   .abbreviations = kEnglish.abbreviations,
                                   .definitions = "",
                                   .question = kEnglish.question,
                                   .answer = kEnglish.answer,
                                   .phrases = kEnglish.phrases};
    return data;
}

} // namespace

const LanguageData& dataOf(Language language) {
    switch (language) {
    case Language::English:
        return kEnglish;
    case Language::German:
        return kGerman;
    case Language::French:
        return kFrench;
    case Language::Spanish:
        return kSpanish;
    case Language::Portuguese:
        return kPortuguese;
    case Language::Italian:
        return kItalian;
    case Language::Dutch:
        return kDutch;
    case Language::Russian:
        return kRussian;
    case Language::Arabic:
        return kArabic;
    case Language::Chinese:
        return kChinese;
    case Language::Japanese:
        return kJapanese;
    case Language::Other:
        break;
    }
    return otherLanguage();
}

Lexicon::Lexicon(const LanguageData& languageData)
    : data(languageData),
      pronouns(wordSet(data.pronouns)),
      placePrepositions(wordSet(data.placePrepositions)),
      abbreviations(wordSet(data.abbreviations)),
      requestWords(wordSet(data.requestWords)) {
    eachWord(data.stopWords, [&](std::string_view word) { roles[word].isStop = true; });
    eachWord(data.calendar, [&](std::string_view word) { roles[word].isCalendar = true; });
    eachWord(data.paleWords, [&](std::string_view word) { roles[word].isPale = true; });
    // Units and numbers: what is counted is said by the words beside them.
    for (std::string_view list :
         {data.answer.numbers, data.answer.money, data.answer.duration, data.answer.length}) {
        anyPhrase(list, [&](std::string_view word) {
            if (!word.empty()) roles[word].isPale = true;
            return false;
        });
    }
    eachWord(data.prepositions, [&](std::string_view word) { roles[word].isPreposition = true; });
    eachWord(data.personal, [&](std::string_view word) { roles[word].isPersonal = true; });
    eachWord(data.determiners, [&](std::string_view word) { roles[word].isDeterminer = true; });
}

WordRole Lexicon::roleOf(std::string_view word) const {
    const auto role = roles.find(word);
    return role == roles.end() ? WordRole{} : role->second;
}

const Lexicon& lexiconOf(Language language) {
    constexpr std::size_t count = static_cast<std::size_t>(Language::Other) + 1;
    static const auto all = [] {
        std::vector<Lexicon> lexicons;
        for (std::size_t i = 0; i < count; ++i)
            lexicons.emplace_back(dataOf(static_cast<Language>(i)));
        return lexicons;
    }();
    return all[static_cast<std::size_t>(language)];
}

} // namespace vorq::gateway
