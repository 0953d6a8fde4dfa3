#pragma once

#include "engine/embedded/words/Language.h"

#include <string_view>

namespace vorq::gateway {

/// What the engine says around the sentences of a text, in the text's language. "{}" is a place to
/// fill.
struct Phrases {
    std::string_view keySentences = {};
    std::string_view keyTerms = {};
    std::string_view textSays = {};
    std::string_view foundNothing = {};
    std::string_view dates = {};
    std::string_view numbers = {};
    std::string_view ownWordsNote = {};
    std::string_view deeper = {};
    std::string_view fromConversation = {};
    std::string_view lookUp = {};
    std::string_view about = {};
    std::string_view summarize = {};
    /// Between the two terms of a title, with its blanks.
    std::string_view conjunction = {};
    std::string_view separator = {};
    std::string_view gapQuestion = {};
    std::string_view explanation = {};
    std::string_view primer = {};
    std::string_view toBegin = {};
};

/// Words that tell the kind of a question, as phrases between "|".
struct QuestionWords {
    std::string_view person = {};
    std::string_view place = {};
    std::string_view time = {};
    std::string_view quantity = {};
    std::string_view reason = {};
    std::string_view definition = {};
    std::string_view permission = {};
    /// Asks for what somebody does for a living.
    std::string_view profession = {};
    /// Begins a question of no kind.
    std::string_view other = {};
    /// Words that give an amount away: its price, its time, its length, how often.
    std::string_view money = {};
    std::string_view duration = {};
    std::string_view length = {};
    std::string_view frequency = {};
};

/// Words by which a sentence is seen to hold an answer, as phrases between "|".
struct AnswerWords {
    std::string_view person = {};
    std::string_view firstPerson = {};
    std::string_view place = {};
    std::string_view time = {};
    std::string_view reason = {};
    std::string_view weakReason = {};
    std::string_view definition = {};
    std::string_view negation = {};
    std::string_view permission = {};
    std::string_view numbers = {};
    std::string_view money = {};
    std::string_view duration = {};
    std::string_view length = {};
    std::string_view frequency = {};
};

/// What is known of one language. Words are lower-cased and stand between blanks, phrases
/// between "|".
struct LanguageData {
    /// For ICU.
    std::string_view locale = {};
    /// The name of the Snowball stemmer; empty if there is none.
    std::string_view stemmer = {};
    bool hasBlanks = true;
    /// Carry grammar and no content.
    std::string_view stopWords = {};
    /// Months and days of the week.
    std::string_view calendar = {};
    /// A noun stands behind these.
    std::string_view determiners = {};
    /// So it does behind these, perhaps with other words between.
    std::string_view prepositions = {};
    /// Verbs, adverbs and adjectives that many texts use and none is about.
    std::string_view paleWords = {};
    /// Endings of words that are no nouns.
    std::string_view verbEndings = {};
    /// What a point behind does not end a sentence, without that point.
    std::string_view abbreviations = {};
    /// Begin sentences that read badly without the one before.
    std::string_view pronouns = {};
    /// Stand for a person or a thing that was named before, wherever in the sentence.
    std::string_view personal = {};
    /// "Vive en Soria": the verb alone may stand for who was named before.
    bool dropsSubjects = false;
    /// Where a name stands right behind one of these, it is mostly that of a place.
    std::string_view placePrepositions = {};
    /// "go goes went gone|…": forms of one word that no rule of endings tells.
    std::string_view forms = {};
    /// "buy purchase|…": words that questions often use for one another.
    std::string_view synonyms = {};
    /// Part from their verb, as in "einziehen" and "zog … ein".
    std::string_view separable = {};
    /// Begin a mail or end it, as phrases.
    std::string_view greetings = {};
    std::string_view closings = {};
    /// Words of a request that say what to do and not about what.
    std::string_view requestWords = {};
    /// "verb => question" between "|"; the first of them in a sentence makes it a definition.
    std::string_view definitions = {};
    QuestionWords question = {};
    AnswerWords answer = {};
    Phrases phrases = {};
};

[[nodiscard]] const LanguageData& dataOf(Language language);

extern const LanguageData kEnglish;
extern const LanguageData kGerman;
extern const LanguageData kFrench;
extern const LanguageData kSpanish;
extern const LanguageData kPortuguese;
extern const LanguageData kItalian;
extern const LanguageData kDutch;
extern const LanguageData kRussian;
extern const LanguageData kArabic;
extern const LanguageData kChinese;
extern const LanguageData kJapanese;

} // namespace vorq::gateway
