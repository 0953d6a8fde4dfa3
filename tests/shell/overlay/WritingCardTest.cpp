// What the card shows of a session.

#include "doubles/shell/OverlayFixture.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::Contains;

class WritingCardTest : public OverlayFixture {
  protected:
    WritingCardTest() {
        QObject::connect(card.get(), &WritingCard::announced,
                         [this](const QString& words) { heard += words; });
    }

    QStringList heard;
};

TEST_F(WritingCardTest, ShowsTheSuggestionAsADifferenceThatCanBeHeard) {
    pressKey();
    suggest("The new sentence.");
    EXPECT_EQ(card->suggestion(), "The new sentence.");
    EXPECT_EQ(card->spokenDifference(), "removed old, added new");
    EXPECT_THAT(heard, Contains("removed old, added new"));
    EXPECT_EQ(card->markup(Qt::red, Qt::green),
              "The <font color=\"#ff0000\"><s>old</s></font> "
              "<font color=\"#00ff00\"><u>new</u></font> sentence.");
    card->setShowsDifference(false);
    EXPECT_EQ(card->markup(Qt::red, Qt::green), "The new sentence.");
}

TEST_F(WritingCardTest, EnterInAnEmptyFieldReplaces) {
    pressKey();
    suggest("The new sentence.");
    card->setDraft("  ");
    card->submit();
    advance(std::chrono::milliseconds(100));
    ASSERT_EQ(replacer.asked.size(), 1U);
    EXPECT_EQ(replacer.asked.front().replacement, "The new sentence.");
    EXPECT_TRUE(card->isReplaced());
    EXPECT_FALSE(card->canReplace());
    EXPECT_THAT(heard, Contains("Replaced"));
    EXPECT_TRUE(card->canUndo());
    card->undo();
    advance(std::chrono::milliseconds(100));
    EXPECT_FALSE(card->isReplaced());
    EXPECT_TRUE(card->canReplace());
    EXPECT_THAT(heard, Contains("Your original is back"));
}

TEST_F(WritingCardTest, EnterWithoutASuggestionDoesNothing) {
    pressKey();
    card->submit();
    advance(std::chrono::milliseconds(100));
    EXPECT_TRUE(replacer.asked.empty());
    EXPECT_EQ(card->error(), "");
}

TEST_F(WritingCardTest, GoesThroughTheTakesSeen) {
    pressKey();
    suggest("The first take.");
    EXPECT_FALSE(card->showOtherTake(1));
    suggest("The second take.");
    EXPECT_EQ(card->takeNumber(), 2);
    EXPECT_EQ(card->takeCount(), 2);
    EXPECT_TRUE(card->showOtherTake(1));
    EXPECT_EQ(card->suggestion(), "The first take.");
    EXPECT_EQ(card->takeNumber(), 1);
}

TEST_F(WritingCardTest, SaysWhatFailedOnce) {
    pressKey();
    suggest("The new sentence.");
    replacer.outcome = SelectionReplacer::Outcome::NotReplaced;
    heard.clear();
    replaceAndSettle();
    EXPECT_EQ(card->error(), u"Couldn’t replace — try again"_s);
    EXPECT_EQ(heard.count(u"Couldn’t replace — try again"_s), 1);
    replacer.outcome = SelectionReplacer::Outcome::OnClipboard;
    replaceAndSettle();
    EXPECT_EQ(card->error(),
              "The selection has changed, so nothing was replaced. The suggestion is "
              "on the clipboard.");
    EXPECT_EQ(card->suggestion(), "The new sentence.");
}

TEST_F(WritingCardTest, ADeclineOfTheBackendIsALineAndNoSuggestion) {
    pressKey();
    card->run(0);
    clock.settle();
    EXPECT_EQ(card->activeAction(), 0);
    answerLast(422, R"({"error":"Another version needs a language model."})");
    EXPECT_EQ(card->error(), "Another version needs a language model.");
    EXPECT_EQ(card->suggestion(), "");
    EXPECT_FALSE(card->isWorking());
}

TEST_F(WritingCardTest, ATakeComesBackAfterARewriteThatFailed) {
    pressKey();
    suggest("The new sentence.");
    suggest("");
    ASSERT_EQ(card->suggestion(), "");
    EXPECT_TRUE(card->showOtherTake(1));
    EXPECT_EQ(card->suggestion(), "The new sentence.");
    EXPECT_FALSE(card->showOtherTake(1)) << "there is no other";
}

TEST_F(WritingCardTest, WhatWasReplacedCanBeTakenBackWhateverIsOnShow) {
    pressKey();
    suggest("The new sentence.");
    replaceAndSettle();
    suggest("Another sentence.");
    EXPECT_FALSE(card->isReplaced());
    EXPECT_TRUE(card->hasReplaced());
    EXPECT_TRUE(card->canUndo());
    EXPECT_TRUE(card->canReplace());
    card->showOtherTake(-1);
    EXPECT_TRUE(card->isReplaced()) << "this is what stands there";
}

TEST_F(WritingCardTest, TheDifferenceIsToWhatWouldBeWritten) {
    snapshot.text = snapshot.exactText = "the old words";
    pressKey();
    suggest("the new words.");
    EXPECT_EQ(card->spokenDifference(), "removed old, added new");
}

TEST_F(WritingCardTest, AnActionThatIsNoneDoesNothing) {
    pressKey();
    for (const int action : {-1, 3, 1000})
        card->run(action);
    EXPECT_FALSE(card->isWorking());
}

TEST_F(WritingCardTest, SignedOutNothingIsAsked) {
    account->signOut();
    clock.settle();
    pressKey();
    EXPECT_FALSE(card->isSignedIn());
    const auto calls = transport.count();
    card->setDraft("warmer");
    EXPECT_FALSE(card->canSubmit());
    card->submit();
    card->run(1);
    clock.settle();
    EXPECT_EQ(transport.count(), calls);
    EXPECT_EQ(card->draft(), "warmer");
    EXPECT_TRUE(controller->isOpen());
}

TEST_F(WritingCardTest, ShowsOfALongTextWhatCanBeRead) {
    snapshot.exactText = snapshot.text = u"word "_s.repeated(20000);
    pressKey();
    const QString line = u"𝕨ord "_s.repeated(20000);
    suggest(line);
    EXPECT_LT(card->markup(Qt::red, Qt::green).size(), 4 * WritingCard::longestShown * 12);
    card->setShowsDifference(false);
    EXPECT_TRUE(card->markup(Qt::red, Qt::green).endsWith(u"…"_s));
    EXPECT_EQ(card->suggestion(), line.trimmed());
}

TEST_F(WritingCardTest, WithoutASessionEverythingIsEmptyAndNothingHappens) {
    EXPECT_EQ(card->suggestion(), "");
    EXPECT_EQ(card->error(), "");
    EXPECT_EQ(card->takeCount(), 0);
    card->submit();
    card->run(0);
    card->undo();
    card->replace();
    card->stop();
    EXPECT_FALSE(card->showOtherTake(1));
    EXPECT_FALSE(card->canSubmit());
}

} // namespace
} // namespace vorq
