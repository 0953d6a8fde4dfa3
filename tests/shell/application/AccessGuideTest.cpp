// How a user who must sign in first is led to the entry of the menu for it.

#include "doubles/shell/ShellFixture.h"

#include <QSignalSpy>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

const QString chimed = QStringLiteral("vorq.accessGuide.signInChimed");

class AccessGuideTest : public ShellFixture {
  protected:
    AccessGuideTest() { launch(); }

    void askForAccess() { emit m_delegate.notifications().vorqGuidePanelAccess(); }
    // What is called within so much time from now.
    CallList within(std::chrono::milliseconds time) {
        m_calls.clear();
        advance(time);
        return m_calls;
    }
};

TEST_F(AccessGuideTest, OpensTheMenuALittleLaterAndChimesOnTheEntry) {
    askForAccess();
    EXPECT_THAT(m_calls, ElementsAre("yield"));
    EXPECT_THAT(within(139ms), IsEmpty());
    EXPECT_THAT(within(1ms), ElementsAre("yield", "menu"));
    EXPECT_THAT(within(99ms), IsEmpty());
    EXPECT_THAT(within(1ms), ElementsAre("chime"));
    EXPECT_THAT(within(1min), IsEmpty());
}

TEST_F(AccessGuideTest, ThePanelStaysUpWhileTheMenuIsOpen) {
    const QSignalSpy suppressed(&m_delegate.notifications(),
                                &ShellNotifications::vorqSuppressPanelOutsideClose);
    askForAccess();
    ASSERT_EQ(suppressed.count(), 1);
    EXPECT_EQ(suppressed[0][0], true);
    advance(1s);
    emit m_statusItem.menuDidClose();
    ASSERT_EQ(suppressed.count(), 2);
    EXPECT_EQ(suppressed[1][0], false);
}

TEST_F(AccessGuideTest, ChimesOnceForGoodAndOpensTheMenuEachTime) {
    EXPECT_EQ(m_defaults.boolean(chimed), std::nullopt);
    askForAccess();
    EXPECT_EQ(m_defaults.boolean(chimed), true);
    advance(1s);
    askForAccess();
    EXPECT_THAT(within(1s), ElementsAre("yield", "menu"));
}

TEST_F(AccessGuideTest, AskedForAgainMeanwhileItOpensTheMenuOnce) {
    askForAccess();
    advance(100ms);
    askForAccess();
    EXPECT_THAT(within(1s), ElementsAre("yield", "menu", "chime"));
}

// The panel offers to sign in by itself.
TEST_F(AccessGuideTest, WithoutATrayTheKeyboardStaysWithThePanel) {
    m_statusItem.inTray = false;
    const QSignalSpy suppressed(&m_delegate.notifications(),
                                &ShellNotifications::vorqSuppressPanelOutsideClose);
    askForAccess();
    EXPECT_THAT(within(1s), IsEmpty());
    EXPECT_EQ(suppressed.count(), 0);
    EXPECT_EQ(m_defaults.boolean(chimed), std::nullopt) << "nothing has chimed yet";
}

} // namespace
} // namespace vorq
