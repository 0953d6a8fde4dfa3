#include "writing/WritingAsk.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

enum class Ask { Send, Apply, Take, Instruction };

// As whoever acts on it decides.
Ask askOf(const QString& text) {
    if (isSendToVorqPrompt(text)) return Ask::Send;
    if (isApplyOnlyPrompt(text)) return Ask::Apply;
    return isAnotherTakePrompt(text) ? Ask::Take : Ask::Instruction;
}

TEST(WritingAskTest, IsNormalizedToLowerCaseSingleBlanksAndNoMarksAtItsEnds) {
    EXPECT_EQ(normalizedAsk(u"Again!"), "again");
    EXPECT_EQ(normalizedAsk(u"  Try\t\nAGAIN?!. "), "try again");
    EXPECT_EQ(normalizedAsk(u"...no"), "no");
    EXPECT_EQ(normalizedAsk(u" ?! "), "");
    EXPECT_EQ(normalizedAsk(u"v. 2 now"), "v. 2 now");
}

TEST(WritingAskTest, AgainIsAnotherTake) {
    EXPECT_EQ(askOf("Again!"), Ask::Take);
    EXPECT_EQ(askOf("No"), Ask::Take);
    EXPECT_EQ(askOf("please give me a better one"), Ask::Take);
    EXPECT_EQ(askOf("a SECOND, shorter draft?"), Ask::Take);
}

TEST(WritingAskTest, ReplacingIsForTheSelectionAsAWholeOnly) {
    EXPECT_EQ(askOf("Replace it please."), Ask::Apply);
    EXPECT_EQ(askOf("Yes"), Ask::Apply);
    EXPECT_EQ(askOf("use the text now"), Ask::Apply);
    EXPECT_EQ(askOf("Replace the word cat"), Ask::Instruction);
    EXPECT_EQ(askOf("it"), Ask::Instruction);
}

TEST(WritingAskTest, SendingNeedsAVerbUnlessItIsAKnownPhrase) {
    EXPECT_EQ(askOf("show this in Vorq"), Ask::Send);
    EXPECT_EQ(askOf("please vorq"), Ask::Instruction);
    EXPECT_EQ(askOf("open panel"), Ask::Send);
    EXPECT_EQ(askOf("Vorq panel."), Ask::Send);
}

TEST(WritingAskTest, MoreThanSixWordsAreAnInstructionUnlessTheyAreAKnownPhrase) {
    EXPECT_EQ(askOf("please give me another version of this"), Ask::Instruction);
    EXPECT_EQ(askOf("please give me another version now"), Ask::Take);
    EXPECT_EQ(askOf("please give me another version of this one now"), Ask::Instruction);
    EXPECT_EQ(askOf("I don't like that"), Ask::Take);
}

TEST(WritingAskTest, WordsOfAnotherTakeStandAloneAndInOrder) {
    EXPECT_EQ(askOf("version another"), Ask::Instruction);
    EXPECT_EQ(askOf("anothers version"), Ask::Instruction);
    EXPECT_EQ(askOf("another versions"), Ask::Instruction);
    EXPECT_EQ(askOf("another's (version)"), Ask::Take);
    // An accent makes another word of it.
    EXPECT_EQ(askOf(u"another\u0301 version"_s), Ask::Instruction);
    EXPECT_EQ(askOf(u"a_new one"_s), Ask::Instruction);
    EXPECT_EQ(askOf(u"\U00010400new one"_s), Ask::Instruction);
}

TEST(WritingAskTest, AnythingIsReadWithoutHanging) {
    EXPECT_EQ(askOf(QString()), Ask::Instruction);
    EXPECT_EQ(askOf(QString(QChar(0xD800))), Ask::Instruction);
    EXPECT_EQ(askOf(u"new "_s.repeated(500'000)), Ask::Instruction);
    EXPECT_EQ(askOf(u"?"_s.repeated(1'000'000)), Ask::Instruction);
}

} // namespace
} // namespace vorq
