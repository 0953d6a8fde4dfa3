#include "writing/TakeHistory.h"
#include "writing/ReplacementFit.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TakeHistoryTest, BlankTakesAreNone) {
    TakeHistory takes;
    takes.reject(u" \n");
    takes.show(" ");
    takes.show({});
    EXPECT_THAT(takes.rejected(), IsEmpty());
    EXPECT_THAT(takes.seen(), IsEmpty());
    EXPECT_EQ(takes.neighbourOf("x", 1), "");
}

TEST(TakeHistoryTest, TheFifthRejectedTakePushesOutTheFirst) {
    TakeHistory takes;
    for (const char16_t* take : {u"1", u"2", u" 3 ", u"4", u"2", u"5"})
        takes.reject(take);
    EXPECT_THAT(takes.rejected(), ElementsAre("2", "3", "4", "5"));
}

TEST(TakeHistoryTest, GoesRoundInEitherDirection) {
    TakeHistory takes;
    for (const char* take : {"a", "b", "c"})
        takes.show(take);
    EXPECT_EQ(takes.neighbourOf("a", 1), "b");
    EXPECT_EQ(takes.neighbourOf("c", 1), "a");
    EXPECT_EQ(takes.neighbourOf("a", -1), "c");
    EXPECT_EQ(takes.neighbourOf("a", -7), "c");
    EXPECT_EQ(takes.neighbourOf("", 1), "c");
}

TEST(TakeHistoryTest, KeepsNoMoreThanAWriterCanLookAt) {
    TakeHistory takes;
    for (int i = 0; i < 100; ++i)
        takes.show(QString::number(i));
    EXPECT_EQ(takes.seen().size(), TakeHistory::mostSeen);
    EXPECT_EQ(takes.seen().back(), "99");
}

TEST(ReplacementFitTest, HasTheWhiteSpaceAndTheNewlinesOfTheOriginal) {
    EXPECT_EQ(replacementFor("\n  old. \t", " new.\n"), "\n  new. \t");
    EXPECT_EQ(replacementFor("a.\r\nb.", "c.\nd."), "c.\r\nd.");
}

TEST(ReplacementFitTest, HasNoFinalFullStopWhereTheOriginalHasNone) {
    EXPECT_EQ(replacementFor("old words", "New words."), "New words");
    EXPECT_EQ(replacementFor("old words\n", "New words."), "New words\n");
    EXPECT_EQ(replacementFor("old words.", "New words."), "New words.");
    EXPECT_EQ(replacementFor(u"古い言葉"_s, u"新しい言葉。"_s), u"新しい言葉"_s);
}

TEST(ReplacementFitTest, HasAFinalFullStopWhereTheOriginalEndsASentence) {
    for (const char* original :
         {"Is it old?", "Old!", "Old…", "He said “old.”", "(It is old.)", "[“Old?”]",
          "“It is ‘old.’”", "„Alt.“", "« Vieux ! »", "古い？", "「古い。」"})
        EXPECT_EQ(replacementFor(original, "It is new."), "It is new.") << original;
    for (const char* original : {"“old”", "(old)", "an “old”", "\""})
        EXPECT_EQ(replacementFor(original, "It is new."), "It is new") << original;
}

TEST(ReplacementFitTest, AnAddressOrANumberIsNoAbbreviation) {
    EXPECT_EQ(replacementFor("see our page", "Visit example.com."), "Visit example.com");
    EXPECT_EQ(replacementFor("the version", "Version 3.5."), "Version 3.5");
}

TEST(ReplacementFitTest, KeepsWhatIsNoFullStop) {
    EXPECT_EQ(replacementFor("old", "What now?"), "What now?");
    EXPECT_EQ(replacementFor("old", "and so on..."), "and so on...");
    EXPECT_EQ(replacementFor("old", "apples, pears etc."), "apples, pears etc.");
    EXPECT_EQ(replacementFor("old", "in the U.S."), "in the U.S.");
    EXPECT_EQ(replacementFor("old", "He said “no.”"), "He said “no.”");
}

TEST(ReplacementFitTest, AnOriginalOfWhiteSpaceAloneTakesTheSuggestion) {
    EXPECT_EQ(replacementFor("  ", "New."), "New.");
    EXPECT_EQ(replacementFor("old", "."), ".");
}

} // namespace
} // namespace vorq
