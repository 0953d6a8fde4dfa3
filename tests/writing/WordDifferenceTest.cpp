#include "writing/difference/WordDifference.h"
#include "writing/difference/EditScript.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using PartKind = DifferencePart::Kind;
using testing::ElementsAre;
using testing::IsEmpty;
using Numbers = std::vector<std::uint32_t>;

DifferencePart same(const QString& text) {
    return {.kind = PartKind::Same, .text = text};
}
DifferencePart removed(const QString& text) {
    return {.kind = PartKind::Removed, .text = text};
}
DifferencePart added(const QString& text) {
    return {.kind = PartKind::Added, .text = text};
}

// The text without the parts of the kind.
QString without(PartKind kind, const std::vector<DifferencePart>& parts) {
    QString text;
    for (const DifferencePart& part : parts)
        if (part.kind != kind) text += part.text;
    return text;
}

// The difference, once it has been found to tell of both texts whole.
std::vector<DifferencePart> difference(const QString& before, const QString& after) {
    std::vector<DifferencePart> parts = wordDifference(before, after);
    EXPECT_EQ(without(PartKind::Added, parts), before);
    EXPECT_EQ(without(PartKind::Removed, parts), after);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        EXPECT_FALSE(parts[i].text.isEmpty());
        if (i > 0) EXPECT_NE(parts[i].kind, parts[i - 1].kind);
    }
    return parts;
}

Numbers randomNumbers(std::minstd_rand& random, std::size_t size, std::uint32_t kinds) {
    Numbers numbers(size);
    for (std::uint32_t& number : numbers)
        number = std::uniform_int_distribution<std::uint32_t>(0, kinds - 1)(random);
    return numbers;
}

Numbers kept(const Numbers& numbers, const std::vector<bool>& isKept) {
    Numbers result;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (isKept[i]) result.push_back(numbers[i]);
    return result;
}

// By the table of all prefixes.
std::size_t mostInCommon(const Numbers& one, const Numbers& other) {
    std::vector<std::size_t> row(other.size() + 1);
    for (const std::uint32_t number : one) {
        std::size_t diagonal = 0;
        for (std::size_t i = 0; i < other.size(); ++i) {
            const std::size_t above = row[i + 1];
            row[i + 1] = number == other[i] ? diagonal + 1 : std::max(above, row[i]);
            diagonal = above;
        }
    }
    return row.back();
}

TEST(EditScriptTest, KeepsAsMuchAsTheTableOfAllPrefixes) {
    std::minstd_rand random(7);
    for (int round = 0; round < 4000; ++round) {
        const std::uint32_t kinds = 1 + random() % 6;
        const Numbers before = randomNumbers(random, random() % 24, kinds);
        const Numbers after = randomNumbers(random, random() % 24, kinds);
        const EditScript script = editScript(before, after);
        const Numbers common = kept(before, script.isKeptOfOld);
        ASSERT_EQ(common, kept(after, script.isKeptOfNew));
        ASSERT_EQ(common.size(), mostInCommon(before, after)) << "in round " << round;
    }
}

TEST(EditScriptTest, IsValidWhereTheSearchIsEndedEarly) {
    std::minstd_rand random(3);
    for (const std::uint32_t kinds : {1U, 2U, 30U, 1000U, 100'000U}) {
        const Numbers before = randomNumbers(random, 3000, kinds);
        const Numbers after = randomNumbers(random, 2500, kinds);
        const EditScript script = editScript(before, after);
        const Numbers common = kept(before, script.isKeptOfOld);
        EXPECT_EQ(common, kept(after, script.isKeptOfNew));
        // Not the most, but most of it.
        EXPECT_GE(common.size() * 10, mostInCommon(before, after) * 7) << kinds << " kinds";
    }
}

TEST(EditScriptTest, OfNothingThereIsNothing) {
    const Numbers some{1, 2, 3};
    EXPECT_THAT(editScript({}, {}).isKeptOfOld, IsEmpty());
    EXPECT_THAT(editScript(some, {}).isKeptOfOld, ElementsAre(false, false, false));
    EXPECT_THAT(editScript({}, some).isKeptOfNew, ElementsAre(false, false, false));
}

TEST(WordDifferenceTest, ShowsAWordThatGaveWayToAnother) {
    EXPECT_THAT(difference("The quick fox.", "The swift fox."),
                ElementsAre(same("The "), removed("quick"), added("swift"), same(" fox.")));
}

TEST(WordDifferenceTest, ShowsWhatIsLeftOutWithItsWhiteSpace) {
    EXPECT_THAT(difference("It is really very good.", "It is good."),
                ElementsAre(same("It is "), removed("really very "), same("good.")));
    EXPECT_THAT(difference("Good.", "Very good."),
                ElementsAre(removed("Good"), added("Very good"), same(".")));
}

TEST(WordDifferenceTest, TellsMarksFromWords) {
    EXPECT_THAT(difference("Yes it is", "Yes, it is."),
                ElementsAre(same("Yes"), removed(" "), added(", "), same("it is"), added(".")));
    EXPECT_THAT(difference("don't go", "do not go"),
                ElementsAre(removed("don't"), added("do not"), same(" go")));
}

TEST(WordDifferenceTest, ShowsChangedWhiteSpace) {
    EXPECT_THAT(difference("one two", "one\ntwo"),
                ElementsAre(same("one"), removed(" "), added("\n"), same("two")));
    EXPECT_THAT(difference("  one", "one"), ElementsAre(removed("  "), same("one")));
}

TEST(WordDifferenceTest, PassesOverTheLittleThatTwoOtherTextsShare) {
    EXPECT_THAT(
        difference("Rivers carry the silt downstream.", "Mountains shape the weather here."),
        ElementsAre(removed("Rivers carry the silt downstream"),
                    added("Mountains shape the weather here"), same(".")));
}

TEST(WordDifferenceTest, SplitsTextsWithoutBlanksToo) {
    EXPECT_THAT(difference(u"私は東京に行く"_s, u"私は京都に行く"_s),
                ElementsAre(same(u"私は"_s), removed(u"東"_s), same(u"京"_s), added(u"都"_s),
                            same(u"に行く"_s)));
}

TEST(WordDifferenceTest, OfTheSameTextShowsNoChange) {
    EXPECT_THAT(difference("Same.", "Same."), ElementsAre(same("Same.")));
    EXPECT_THAT(difference("", ""), IsEmpty());
    EXPECT_THAT(difference("", "New."), ElementsAre(added("New.")));
    EXPECT_THAT(difference(" \n", ""), ElementsAre(removed(" \n")));
}

TEST(WordDifferenceTest, TellsOfBothTextsWholeWhateverTheyAre) {
    std::minstd_rand random(11);
    static constexpr std::u16string_view units =
        u"ab c.\n\r\t,-\u0301\u200D\u05D0\u6771\U0001F469\"\u00A0";
    const auto text = [&random] {
        QString result;
        for (auto left = random() % 40; left > 0; --left)
            result += QChar(units[random() % units.size()]); // halves of surrogate pairs, too
        return result;
    };
    for (int round = 0; round < 3000; ++round)
        difference(text(), text());
}

TEST(WordDifferenceTest, ManyThousandWordsAreNoTrouble) {
    std::minstd_rand random(5);
    const auto text = [&random](int words, unsigned kinds) {
        QString result;
        for (int i = 0; i < words; ++i)
            result += u"w"_s + QString::number(random() % kinds) + u' ';
        return result;
    };
    difference(text(60'000, 50), text(50'000, 50));
    difference(text(60'000, 100'000), text(50'000, 100'000));
    difference(QString(1'000'000, u'a'), u"a "_s.repeated(500'000));
}

TEST(SpokenDifferenceTest, TellsWhatIsRemovedAndAdded) {
    EXPECT_EQ(spokenDifference(difference("The quick fox.", "The swift fox!")),
              "removed quick, added swift, removed ., added !");
    EXPECT_EQ(spokenDifference(difference("one two", "one\ntwo")),
              "removed a space, added a line break");
    EXPECT_EQ(spokenDifference(difference("Same.", "Same.")), "no changes");
}

} // namespace
} // namespace vorq
