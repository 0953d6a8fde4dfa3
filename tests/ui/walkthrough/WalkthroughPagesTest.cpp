// The pages of the walkthrough, pressed by keys and the mouse.

#include "doubles/ui/WalkthroughStage.h"

#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using testing::Contains;
using testing::IsSupersetOf;
using Page = Walkthrough::Page;

class WalkthroughPagesTest : public testing::Test {
  protected:
    void openTest() {
        stage.grant();
        stage.show();
        stage.click(u"Self-Test…"_s);
    }
    [[nodiscard]] bool isShown() { return stage.permissions.showAccessibilityWalkthrough(); }
    [[nodiscard]] Page page() { return stage.walkthrough->page(); }
    // Presses Tab until it comes round.
    QStringList stops() {
        QStringList met;
        for (int tabs = 0; tabs < 12; ++tabs) {
            stage.key(Qt::Key_Tab);
            if (met.contains(stage.focused())) break;
            met += stage.focused();
        }
        met.sort();
        return met;
    }
    // Texts and buttons that stick out of the window, or are cut.
    QStringList cut() {
        QStringList found;
        collectCut(*stage.window->rootObject(), found);
        return found;
    }

    // Once what changes has come to its place.
    void expectNothingIsCut() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return cut().isEmpty(); }))
            << cut().join(u' ').toStdString();
    }

    WalkthroughStage stage;

  private:
    void collectCut(const QQuickItem& item, QStringList& found) {
        if (!item.isVisible()) return;
        const bool isText = item.inherits("QQuickText");
        const QRectF place = item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
        const QString words = item.property("text").toString();
        const bool isOutside = place.left() < 0 || place.right() > stage.window->width();
        if (isText && !words.isEmpty() && (isOutside || item.property("truncated").toBool()))
            found += words;
        for (const QQuickItem* child : item.childItems())
            collectCut(*child, found);
    }
};

TEST_F(WalkthroughPagesTest, TheRequestHasItsWordsAndButtons) {
    stage.show();
    EXPECT_THAT(
        stage.heard(),
        IsSupersetOf(
            {"Dialog: Accessibility Access", "Heading: Accessibility Access",
             "StaticText: “Vorq” would like to control this computer using accessibility features.",
             "StaticText: Grant access to this application in Privacy & Security settings, located "
             "in System Settings.",
             "Grouping: Accessibility", "StaticText: Not set", "Button: Open System Settings",
             "Button: Deny", "Button: Help"}));
}

TEST_F(WalkthroughPagesTest, ReturnAndTheButtonAskTheSystem) {
    stage.show();
    EXPECT_EQ(stage.focused(), u"Open System Settings");
    stage.key(Qt::Key_Return);
    EXPECT_EQ(stage.privacy.opened, 1);
    EXPECT_NE(stage.saying(u"Turning on…"_s), nullptr);
    stage.click(u"Open System Settings"_s);
    EXPECT_EQ(stage.privacy.opened, 1) << "while the system answers";
    stage.clock.advance(Walkthrough::answerLimit);
    stage.settle();
    EXPECT_NE(stage.saying(stage.walkthrough->problem()), nullptr);
    EXPECT_THAT(stage.heard(),
                Contains("Notification: " + stage.walkthrough->problem().toStdString()));
    stage.click(u"Open System Settings"_s);
    EXPECT_EQ(stage.privacy.opened, 2);
}

TEST_F(WalkthroughPagesTest, TheButtonDenies) {
    stage.show();
    stage.click(u"Deny"_s);
    EXPECT_FALSE(isShown());
}

TEST_F(WalkthroughPagesTest, EscapeDenies) {
    stage.show();
    stage.key(Qt::Key_Escape);
    EXPECT_FALSE(isShown());
    stage.permissions.adviseToGrantAgain();
    EXPECT_FALSE(isShown());
}

TEST_F(WalkthroughPagesTest, TabGoesRoundTheButtons) {
    stage.show();
    EXPECT_EQ(stops(), QStringList({u"Deny"_s, u"Help"_s, u"Open System Settings"_s}));
}

TEST_F(WalkthroughPagesTest, TheHelpComesAndGoes) {
    stage.show();
    stage.click(u"Help"_s);
    EXPECT_EQ(page(), Page::Help);
    EXPECT_EQ(stage.focused(), u"Back");
    stage.click(u"Back"_s);
    EXPECT_EQ(page(), Page::Request);
    stage.click(u"Help"_s);
    stage.key(Qt::Key_Escape);
    EXPECT_EQ(page(), Page::Request);
    EXPECT_TRUE(isShown());
}

TEST_F(WalkthroughPagesTest, OnceGrantedItNamesThePrograms) {
    stage.privacy.programs = {u"FeatherPad"_s, u"Okular"_s};
    stage.show();
    stage.grant();
    EXPECT_THAT(stage.heard(),
                IsSupersetOf({"Dialog: Accessibility Is On", "List: Programs to start again",
                              "ListItem: FeatherPad", "ListItem: Okular"}));
    EXPECT_EQ(stops(), QStringList({u"Done"_s, u"Help"_s, u"Self-Test…"_s}));
    stage.privacy.programs.clear();
    stage.walkthrough->refresh();
    stage.settle();
    EXPECT_THAT(stage.heard(), IsSupersetOf({"StaticText: Vorq can read highlighted text.",
                                             "StaticText: Granted"}));
    stage.click(u"Done"_s);
    EXPECT_FALSE(isShown());
}

TEST_F(WalkthroughPagesTest, TheTestWaitsUntilItIsWanted) {
    openTest();
    EXPECT_EQ(page(), Page::Checks);
    EXPECT_FALSE(stage.test->isRunning());
    EXPECT_EQ(stage.focused(), u"Run");
    EXPECT_EQ(stops(), QStringList({u"Close"_s, u"Help"_s, u"Run"_s}));
    stage.click(u"Close"_s);
    EXPECT_FALSE(isShown());
}

TEST_F(WalkthroughPagesTest, TheTestIsFollowedCheckByCheck) {
    openTest();
    stage.key(Qt::Key_Return);
    ASSERT_TRUE(stage.test->isRunning());
    EXPECT_EQ(stage.focused(), u"Cancel");
    EXPECT_THAT(stage.heard(),
                IsSupersetOf({"ProgressBar: 0 of 6 checks", "ListItem: Session: Testing…",
                              "ListItem: Tray: Waiting"}));
    stage.finishChecks(3);
    EXPECT_THAT(stage.heard(),
                IsSupersetOf({"ProgressBar: 3 of 6 checks",
                              "ListItem: Accessibility: Works. Applications can be read.",
                              "ListItem: Tray: Testing…"}));
    stage.finishTest();
    EXPECT_FALSE(stage.test->isRunning());
    EXPECT_THAT(
        stage.heard(),
        IsSupersetOf(
            {"StaticText: One thing does not work.", "Notification: One thing does not work.",
             "ListItem: Hot keys: Does not work. Taken by another program: Super+Shift+A."}));
    EXPECT_NE(stage.saying(u"Bind keys of your desktop to: vorq summon"_s), nullptr);
    EXPECT_NE(stage.saying(u"FeatherPad, Okular"_s), nullptr);
    EXPECT_EQ(stage.focused(), u"Done");
    EXPECT_EQ(stops(), QStringList({u"Done"_s, u"Help"_s, u"Run Again"_s}));
}

TEST_F(WalkthroughPagesTest, ItRunsAgain) {
    openTest();
    stage.click(u"Run"_s);
    stage.finishTest();
    stage.click(u"Run Again"_s);
    ASSERT_TRUE(stage.test->isRunning());
    EXPECT_EQ(stage.focused(), u"Cancel");
    EXPECT_EQ(stage.saying(u"One thing does not work."_s), nullptr);
    EXPECT_THAT(stage.heard(), Contains("ListItem: Session: Testing…"));
    stage.finishTest();
    EXPECT_NE(stage.saying(u"One thing does not work."_s), nullptr);
    stage.key(Qt::Key_Return);
    EXPECT_FALSE(isShown()) << "done";
}

TEST_F(WalkthroughPagesTest, EscapeEndsTheTestAndThenTheWindow) {
    openTest();
    stage.click(u"Run"_s);
    stage.finishChecks(1);
    stage.key(Qt::Key_Escape);
    EXPECT_FALSE(stage.test->isRunning());
    EXPECT_TRUE(isShown());
    EXPECT_NE(stage.saying(u"The test was ended early."_s), nullptr);
    EXPECT_THAT(stage.heard(), Contains("ListItem: Tray: Not tested"));
    stage.key(Qt::Key_Escape);
    EXPECT_FALSE(isShown());
}

TEST_F(WalkthroughPagesTest, TheButtonCancels) {
    openTest();
    stage.click(u"Run"_s);
    stage.click(u"Cancel"_s);
    EXPECT_FALSE(stage.test->isRunning());
    EXPECT_EQ(stage.focused(), u"Done");
}

TEST_F(WalkthroughPagesTest, ControlWClosesWithTheTest) {
    openTest();
    stage.click(u"Run"_s);
    stage.key(Qt::Key_W, Qt::ControlModifier);
    stage.settle();
    EXPECT_FALSE(isShown());
    EXPECT_FALSE(stage.test->isRunning());
}

TEST_F(WalkthroughPagesTest, OnALowScreenTheKeysScroll) {
    stage.grant();
    stage.show(360);
    stage.click(u"Self-Test…"_s);
    stage.click(u"Run"_s);
    stage.finishTest();
    EXPECT_LE(stage.window->height(), 360);
    QQuickItem* words = stage.saying(u"Session"_s);
    ASSERT_NE(words, nullptr);
    stage.key(Qt::Key_Home);
    const double before = words->mapToScene({}).y();
    stage.key(Qt::Key_PageDown);
    EXPECT_LT(words->mapToScene({}).y(), before);
    stage.key(Qt::Key_Home);
    EXPECT_EQ(words->mapToScene({}).y(), before);
}

TEST_F(WalkthroughPagesTest, LargeTextIsNotCut) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(scale);
        stage.look.setTextScale(scale);
        stage.show();
        expectNothingIsCut();
        stage.walkthrough->openSystemSettings();
        stage.clock.advance(Walkthrough::answerLimit);
        stage.settle();
        expectNothingIsCut();
        stage.walkthrough->showHelp();
        stage.settle();
        expectNothingIsCut();
        stage.walkthrough->showSelfTest();
        stage.settle();
        expectNothingIsCut();
        stage.walkthrough->selfTest()->start();
        stage.finishTest();
        expectNothingIsCut();
    }
}

} // namespace
} // namespace vorq
