#include "shell/permissions/Walkthrough.h"
#include "areas/Permissions.h"
#include "doubles/shell/SelfTestFixture.h"
#include "platform/testing/ScriptedDefaults.h"
#include "platform/testing/ScriptedPermissionProbe.h"

#include <QSignalSpy>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Page = Walkthrough::Page;

class WalkthroughTest : public SelfTestFixture {
  protected:
    WalkthroughTest() {
        m_permissions.setProbe(&m_probe);
        m_permissions.setPrivacySettings(&m_privacy);
        m_walkthrough.begin();
        m_clock.settle();
    }

    void open() {
        m_permissions.openAccessibilityWalkthrough();
        m_walkthrough.begin();
        m_clock.settle();
    }
    void setText(PermissionState state) {
        m_probe.text = state;
        m_permissions.refreshPermissions();
        m_clock.settle();
    }
    void grant() { setText(PermissionState::Granted); }
    [[nodiscard]] bool shows() const { return m_permissions.showAccessibilityWalkthrough(); }

    ScriptedDefaults m_stored;
    ScriptedPermissionProbe m_probe;
    Permissions m_permissions;
    Walkthrough m_walkthrough{{.clock = m_clock,
                               .defaults = m_stored,
                               .permissions = m_permissions,
                               .privacy = m_privacy,
                               .selfTest = [this]() -> SelfTest& { return *m_test; },
                               .applicationName = u"Vorq"_s}};
};

TEST_F(WalkthroughTest, BeginsWithTheRequest) {
    EXPECT_EQ(m_walkthrough.page(), Page::Request);
    EXPECT_EQ(m_walkthrough.applicationName(), u"Vorq");
    EXPECT_EQ(m_walkthrough.permissions()->textCapture(), u"pending");
    EXPECT_TRUE(m_walkthrough.canAsk());
    EXPECT_EQ(m_walkthrough.problem(), QString());
}

TEST_F(WalkthroughTest, OneRequestIsMadeAndTheGrantIsAwaited) {
    m_walkthrough.openSystemSettings();
    m_walkthrough.openSystemSettings();
    EXPECT_EQ(m_privacy.opened, QStringList(u"Privacy_Accessibility"_s));
    EXPECT_TRUE(m_walkthrough.isAsking());
    EXPECT_EQ(m_walkthrough.page(), Page::Request);
    m_privacy.programs = {u"FeatherPad"_s};
    grant();
    EXPECT_EQ(m_walkthrough.page(), Page::Granted);
    EXPECT_FALSE(m_walkthrough.isAsking());
    EXPECT_EQ(m_walkthrough.programs(), QStringList(u"FeatherPad"_s));
    m_clock.advance(Walkthrough::answerLimit);
    EXPECT_EQ(m_walkthrough.problem(), QString());
}

TEST_F(WalkthroughTest, WithoutAnAnswerItSaysSoAndCanAskAnew) {
    m_walkthrough.openSystemSettings();
    m_clock.advance(Walkthrough::answerLimit - 1ms);
    EXPECT_EQ(m_walkthrough.problem(), QString());
    m_clock.advance(1ms);
    EXPECT_TRUE(m_walkthrough.problem().contains(u"at-spi2-core"));
    EXPECT_FALSE(m_walkthrough.isAsking());
    m_walkthrough.openSystemSettings();
    EXPECT_EQ(m_walkthrough.problem(), QString());
    EXPECT_EQ(m_privacy.opened.size(), 2);
}

TEST_F(WalkthroughTest, WhoReadsTheHelpMeanwhileCanAskAnew) {
    m_walkthrough.openSystemSettings();
    m_walkthrough.showHelp();
    m_clock.advance(Walkthrough::answerLimit);
    m_walkthrough.goBack();
    EXPECT_FALSE(m_walkthrough.isAsking());
    EXPECT_TRUE(m_walkthrough.canAsk());
    EXPECT_TRUE(m_walkthrough.problem().contains(u"at-spi2-core"));
}

TEST_F(WalkthroughTest, WhatIsGrantedWhileTheHelpIsReadIsNotAskedForAnyMore) {
    m_walkthrough.openSystemSettings();
    m_walkthrough.showHelp();
    const QSignalSpy changed(&m_walkthrough, &Walkthrough::changed);
    grant();
    EXPECT_EQ(m_walkthrough.page(), Page::Help);
    EXPECT_FALSE(m_walkthrough.isAsking());
    EXPECT_GT(changed.count(), 0);
    m_walkthrough.goBack();
    EXPECT_EQ(m_walkthrough.page(), Page::Granted);
    m_clock.advance(Walkthrough::answerLimit);
    setText(PermissionState::Pending);
    EXPECT_TRUE(m_walkthrough.canAsk());
    EXPECT_EQ(m_walkthrough.problem(), QString());
}

TEST_F(WalkthroughTest, WhereItCannotBeGrantedItSaysWhy) {
    m_privacy.support = std::unexpected(u"There is no desktop."_s);
    EXPECT_EQ(m_walkthrough.problem(), u"There is no desktop.");
    EXPECT_FALSE(m_walkthrough.canAsk());
    m_walkthrough.openSystemSettings();
    EXPECT_TRUE(m_privacy.opened.isEmpty());
}

TEST_F(WalkthroughTest, WhereItIsGrantedItBeginsWithWhatComesNext) {
    grant();
    m_walkthrough.begin();
    EXPECT_EQ(m_walkthrough.page(), Page::Granted);
}

TEST_F(WalkthroughTest, AsksTheSystemAnewWhenItIsLookedAt) {
    m_probe.text = PermissionState::Granted;
    m_walkthrough.refresh();
    EXPECT_EQ(m_walkthrough.page(), Page::Granted);
}

TEST_F(WalkthroughTest, AProgramThatWasStartedAgainGoesFromTheList) {
    m_privacy.programs = {u"FeatherPad"_s, u"Kate"_s};
    grant();
    m_privacy.programs = {u"Kate"_s};
    m_walkthrough.refresh();
    EXPECT_FALSE(m_walkthrough.isLooking()) << "the list stays meanwhile";
    m_clock.settle();
    EXPECT_EQ(m_walkthrough.programs(), QStringList(u"Kate"_s));
}

TEST_F(WalkthroughTest, TheProgramsAreLookedAtWhileTheyShow) {
    m_privacy.programs = {u"FeatherPad"_s, u"Kate"_s};
    grant();
    m_privacy.programs = {u"Kate"_s};
    m_clock.advance(Walkthrough::lookInterval);
    EXPECT_EQ(m_walkthrough.programs(), QStringList(u"Kate"_s));
    m_walkthrough.close();
    m_privacy.programs = {u"FeatherPad"_s};
    m_clock.advance(Walkthrough::lookInterval);
    EXPECT_EQ(m_walkthrough.programs(), QStringList(u"Kate"_s)) << "looked at after it was closed";
}

TEST_F(WalkthroughTest, WhatIsTakenBackIsAskedForAgain) {
    grant();
    setText(PermissionState::Pending);
    EXPECT_EQ(m_walkthrough.page(), Page::Request);
}

TEST_F(WalkthroughTest, DeniedItGoesAndDoesNotNag) {
    open();
    m_walkthrough.deny();
    EXPECT_FALSE(shows());
    m_permissions.adviseToGrantAgain();
    EXPECT_FALSE(shows());
}

TEST_F(WalkthroughTest, WhoeverClosesTheRequestDeniesIt) {
    open();
    m_walkthrough.showHelp();
    m_walkthrough.close();
    EXPECT_FALSE(shows());
    m_permissions.adviseToGrantAgain();
    EXPECT_FALSE(shows());
}

TEST_F(WalkthroughTest, ClosedAfterTheGrantItComesAgainWhenItIsNeeded) {
    open();
    grant();
    m_walkthrough.close();
    EXPECT_FALSE(shows());
    m_permissions.adviseToGrantAgain();
    EXPECT_TRUE(shows());
}

TEST_F(WalkthroughTest, TheHelpLeadsBack) {
    m_walkthrough.showHelp();
    m_walkthrough.showHelp();
    EXPECT_EQ(m_walkthrough.page(), Page::Help);
    m_walkthrough.goBack();
    EXPECT_EQ(m_walkthrough.page(), Page::Request);
    m_walkthrough.showHelp();
    grant();
    m_walkthrough.goBack();
    EXPECT_EQ(m_walkthrough.page(), Page::Granted) << "it was granted meanwhile";
    m_walkthrough.showSelfTest();
    m_walkthrough.showHelp();
    m_walkthrough.goBack();
    EXPECT_EQ(m_walkthrough.page(), Page::Checks);
}

TEST_F(WalkthroughTest, AGrantDoesNotTakeTheSelfTestAway) {
    m_walkthrough.showSelfTest();
    grant();
    EXPECT_EQ(m_walkthrough.page(), Page::Checks);
}

TEST_F(WalkthroughTest, ClosingEndsTheTest) {
    m_walkthrough.showSelfTest();
    EXPECT_FALSE(m_walkthrough.selfTest()->isTesting()) << "nobody has asked for it yet";
    m_walkthrough.selfTest()->start();
    turn(5ms);
    m_walkthrough.close();
    for (const QDeadlineTimer guard(60'000); m_test->isRunning(); turn(5ms))
        ASSERT_FALSE(guard.hasExpired());
    EXPECT_LT(m_test->results().size(), m_test->count());
}

TEST_F(WalkthroughTest, ComesByItselfInTheFirstRunOnly) {
    m_walkthrough.offerInFirstRun();
    m_clock.advance(Walkthrough::offerDelay - 1ms);
    EXPECT_FALSE(shows());
    m_clock.advance(1ms);
    EXPECT_TRUE(shows());
    EXPECT_EQ(m_stored.boolean(Walkthrough::shownKey), true);
    m_walkthrough.deny();
    m_walkthrough.offerInFirstRun();
    m_clock.advance(Walkthrough::offerDelay);
    EXPECT_FALSE(shows());
}

TEST_F(WalkthroughTest, DoesNotComeWhereItIsGranted) {
    m_walkthrough.offerInFirstRun();
    m_clock.advance(1s);
    m_probe.text = PermissionState::Granted;
    m_clock.advance(Walkthrough::offerDelay);
    EXPECT_FALSE(shows());
    EXPECT_FALSE(m_stored.boolean(Walkthrough::shownKey).value_or(false));
}

} // namespace
} // namespace vorq
