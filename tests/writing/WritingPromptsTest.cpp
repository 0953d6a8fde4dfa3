#include "writing/WritingPrompts.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

TEST(WritingPromptsTest, AnEmptySessionAddsNoLine) {
    EXPECT_EQ(promptForUserInstruction("shorter", " \n", {}).count(u'\n'), 6);
    EXPECT_FALSE(promptForUserInstruction("shorter", {}, {}).contains("\n\n"));
    EXPECT_EQ(promptForAnotherTake(std::nullopt, {}, {}).count(u'\n'), 3);
}

TEST(WritingPromptsTest, TheVersionOnShowStandsOnALineOfItsOwn) {
    EXPECT_TRUE(promptForUserInstruction("shorter", " On show. \n", "S")
                    .contains(u"apply the direction to this one:\nOn show.\nS\nReturn ONE"_s));
}

TEST(WritingPromptsTest, RejectedTakesAreNumbered) {
    EXPECT_TRUE(promptForAnotherTake("warmer", {"One.", "Two."}, "S")
                    .contains(u"earlier direction: warmer\nAlready shown and rejected — do not "
                              "repeat or lightly reword these:\n1. One.\n2. Two.\nS\nPut the"_s));
}

TEST(WritingPromptsTest, AnEmptyInstructionIsNone) {
    EXPECT_EQ(promptForAnotherTake(QString(), {}, "S"),
              promptForAnotherTake(std::nullopt, {}, "S"));
}

} // namespace
} // namespace vorq
