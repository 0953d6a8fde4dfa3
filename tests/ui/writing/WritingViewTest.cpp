// The card of the writing tools, met with mouse, keys and a screen reader.

#include "doubles/ui/WritingStage.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class WritingViewTest : public testing::Test {
  protected:
    static QAccessibleInterface& heardOf(QQuickItem& item) {
        return *QAccessible::queryAccessibleInterface(&item);
    }
    [[nodiscard]] bool isEnabled(const QString& words) {
        const QQuickItem* item = stage.saying(words);
        return item != nullptr && item->isEnabled();
    }

    WritingStage stage{u"The plants I grew up with tell it very differently."_s};
};

TEST_F(WritingViewTest, TypingAndEnterAskAndEnterAgainReplaces) {
    stage.show();
    EXPECT_FALSE(isEnabled("Replace"));
    stage.type("warmer");
    EXPECT_EQ(stage.card->draft(), "warmer");
    stage.key(Qt::Key_Return);
    EXPECT_TRUE(stage.card->isWorking());
    ASSERT_TRUE(stage.saying(u"Working…"_s));
    EXPECT_TRUE(stage.saying("Stop"));
    stage.answer(200, R"({"summary":"The plants tell it otherwise.","feedback":"",)"
                      R"("corrections":"","sources":[]})");
    stage.fit();
    stage.settle(30);
    EXPECT_TRUE(isEnabled("Replace"));
    stage.key(Qt::Key_Return);
    stage.clock.advance(std::chrono::milliseconds(100));
    stage.settle(30);
    ASSERT_EQ(stage.replacer.asked.size(), 1U);
    EXPECT_EQ(stage.replacer.asked.front().replacement, "The plants tell it otherwise.");
    EXPECT_TRUE(stage.saying("Replaced"));
    EXPECT_TRUE(isEnabled("Undo"));
    stage.click("Undo");
    EXPECT_EQ(stage.replacer.asked.size(), 1U) << "after a pause";
    stage.clock.advance(std::chrono::milliseconds(100));
    ASSERT_EQ(stage.replacer.asked.size(), 2U);
    EXPECT_EQ(stage.replacer.asked.back().target.original, "The plants tell it otherwise.");
}

TEST_F(WritingViewTest, TheSuggestionIsHeardWithWhatChanged) {
    stage.suggest("warmer", "The plants I grew up with tell it otherwise.");
    stage.show();
    QQuickItem* words = stage.saying("The plants I grew up with tell it otherwise.");
    ASSERT_TRUE(words);
    EXPECT_EQ(heardOf(*words).role(), QAccessible::StaticText);
    EXPECT_EQ(heardOf(*words).text(QAccessible::Description), stage.card->spokenDifference());
    EXPECT_FALSE(stage.card->spokenDifference().isEmpty());
    QQuickItem* arrow = stage.saying("Selected text");
    ASSERT_TRUE(arrow);
    EXPECT_EQ(heardOf(*arrow).role(), QAccessible::Graphic);
}

TEST_F(WritingViewTest, TabGoesThroughTheTakesInAnEmptyFieldAndOnElsewhere) {
    stage.suggest("warmer", "The first take.");
    stage.suggest("colder", "The second take.");
    stage.show();
    EXPECT_TRUE(stage.saying("Take 2 of 2"));
    stage.key(Qt::Key_Tab);
    EXPECT_EQ(stage.card->suggestion(), "The first take.");
    stage.key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(stage.card->suggestion(), "The second take.");
    const QQuickItem* field = stage.window->activeFocusItem();
    stage.key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_NE(stage.window->activeFocusItem(), field);
    EXPECT_EQ(stage.card->suggestion(), "The second take.");
}

TEST_F(WritingViewTest, EveryControlIsReachedByTheKeyboard) {
    stage.suggest("warmer", "The first take.");
    stage.show();
    stage.key(Qt::Key_Tab);
    QStringList reached;
    for (int i = 0; i < 12; ++i) {
        reached += stage.window->activeFocusItem()->property("text").toString();
        stage.key(Qt::Key_Tab);
    }
    for (const char* name :
         {"Show changes", "Copy", "Close", "Rephrase", "Improve", "Shorter", "Replace"})
        EXPECT_TRUE(reached.contains(name)) << name;
}

TEST_F(WritingViewTest, CopyPutsTheSuggestionOnTheClipboard) {
    stage.suggest("warmer", "The first take.");
    stage.show();
    QGuiApplication::clipboard()->setText("before");
    stage.click("Copy");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "The first take.");
}

TEST_F(WritingViewTest, AChipAsksForWhatItSays) {
    stage.show();
    stage.click("Shorter");
    EXPECT_TRUE(stage.card->isWorking());
    EXPECT_TRUE(stage.transport.last().json()["prompt"].toString().contains("Make it shorter"));
    stage.click("Stop");
    EXPECT_FALSE(stage.card->isWorking());
}

TEST_F(WritingViewTest, AnErrorIsALineThatIsHeard) {
    stage.show();
    stage.click("Improve");
    stage.answer(422, R"({"error":"Writing needs a language model."})");
    stage.fit();
    stage.settle(30);
    QQuickItem* line = stage.saying("Writing needs a language model.");
    ASSERT_TRUE(line);
    EXPECT_EQ(heardOf(*line).role(), QAccessible::AlertMessage);
}

TEST_F(WritingViewTest, SignedOutItSaysHowToSignIn) {
    stage.state->account().signOut();
    stage.clock.settle();
    stage.show();
    EXPECT_TRUE(stage.saying("You are not signed in."));
    EXPECT_TRUE(stage.saying("Sign in"));
    EXPECT_FALSE(stage.saying("Replace"));
    EXPECT_FALSE(stage.saying("Settings"));
    EXPECT_FALSE(stage.saying("Rephrase"));
}

TEST_F(WritingViewTest, ANoticeStandsAlone) {
    stage.card->setNotice("Highlight some text.");
    stage.show();
    EXPECT_TRUE(stage.saying("Highlight some text."));
    EXPECT_FALSE(stage.saying("Rephrase"));
    EXPECT_TRUE(stage.saying("Close"));
}

TEST_F(WritingViewTest, APressIntoTheFieldAsksForTheKeyboard) {
    stage.show();
    const QSignalSpy wanted(stage.card.get(), &WritingCard::keyboardWanted);
    stage.click("Rephrase");
    EXPECT_EQ(wanted.count(), 0);
    stage.click("Redo, refine, or say replace");
    EXPECT_EQ(wanted.count(), 1);
}

TEST_F(WritingViewTest, AsksForTheRoomThatItNeedsAtOnce) {
    stage.show();
    QMetaObject::invokeMethod(&stage.root(), "layOut");
    const double before = stage.root().implicitHeight();
    stage.suggest("warmer", u"A suggestion of some length. "_s.repeated(5));
    QMetaObject::invokeMethod(&stage.root(), "layOut");
    const double withSuggestion = stage.root().implicitHeight();
    EXPECT_GT(withSuggestion, before + 60);
    stage.fit();
    stage.settle(50);
    EXPECT_EQ(stage.root().implicitHeight(), withSuggestion) << "and not with the next frame";
}

TEST_F(WritingViewTest, ALongSuggestionScrolls) {
    stage.suggest("longer", u"A suggestion of some length. "_s.repeated(200));
    stage.show();
    EXPECT_LT(stage.root().implicitHeight(), 460);
}

} // namespace
} // namespace vorq
