#include "shell/status/StatusMenuAttentionChime.h"
#include "platform/testing/ManualClock.h"

#include <QMenu>
#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::AnyOf;
using testing::DoubleNear;

class StatusMenuAttentionChimeTest : public testing::Test {
  protected:
    StatusMenuAttentionChimeTest() {
        m_other = m_menu.addAction("Another entry of the menu");
        m_entry = m_menu.addAction("Sign in");
        m_menu.popup({0, 0});
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_menu));
    }

    // Of the ground of an entry, right of its text.
    [[nodiscard]] QColor ground(const QAction* entry) {
        const QImage shown = m_menu.grab().toImage();
        const QRect place = m_menu.actionGeometry(const_cast<QAction*>(entry));
        return shown.pixelColor(place.right() - 12, place.center().y());
    }
    [[nodiscard]] bool isOrange(const QAction* entry) {
        const QColor color = ground(entry);
        return color.red() > color.blue() + 30 && color.green() > color.blue();
    }

    ManualClock m_clock;
    QMenu m_menu;
    QAction* m_other;
    QAction* m_entry;
    StatusMenuAttentionChime m_chime{m_clock, m_menu};
};

TEST_F(StatusMenuAttentionChimeTest, PulsesAtItsKeyTimesAndBeginsAndEndsUnseen) {
    using Chime = StatusMenuAttentionChime;
    EXPECT_EQ(Chime::lookAt(0).alpha, 0);
    EXPECT_EQ(Chime::lookAt(1).alpha, 0);
    EXPECT_EQ(Chime::lookAt(1).scale, 1);
    for (const double time : {0.12, 0.24, 0.38, 0.52, 0.66, 0.82})
        EXPECT_THAT(Chime::lookAt(time).alpha,
                    AnyOf(DoubleNear(0.22, 1e-9), DoubleNear(0.38, 1e-9), DoubleNear(0.55, 1e-9)));
    EXPECT_LT(Chime::lookAt(0.24).alpha, Chime::lookAt(0.12).alpha);
    EXPECT_GT(Chime::lookAt(0.38).alpha, Chime::lookAt(0.24).alpha);
    EXPECT_GT(Chime::lookAt(0.14).scale, 1);
    EXPECT_EQ(Chime::lookAt(0.3).scale, 1);
}

TEST_F(StatusMenuAttentionChimeTest, TheEntryAloneIsOrangeUntilItIsOver) {
    EXPECT_FALSE(isOrange(m_entry));
    m_chime.play(m_entry, false);
    m_clock.advance(StatusMenuAttentionChime::duration / 8);
    EXPECT_TRUE(isOrange(m_entry));
    EXPECT_FALSE(isOrange(m_other));
    m_clock.advance(StatusMenuAttentionChime::duration);
    EXPECT_FALSE(isOrange(m_entry));
    EXPECT_EQ(m_chime.look(), std::nullopt);
    EXPECT_EQ(m_clock.pendingTimers(), 0U);
}

TEST_F(StatusMenuAttentionChimeTest, WhereNothingIsToMoveTheOrangeStandsStill) {
    m_chime.play(m_entry, true);
    const QColor first = ground(m_entry);
    EXPECT_TRUE(isOrange(m_entry));
    m_clock.advance(600ms);
    EXPECT_EQ(ground(m_entry), first);
    ASSERT_TRUE(m_chime.look());
    EXPECT_EQ(m_chime.look()->scale, 1);
    m_clock.advance(550ms);
    EXPECT_FALSE(isOrange(m_entry));
}

TEST_F(StatusMenuAttentionChimeTest, AnEntryThatGoesMeanwhileIsLeft) {
    m_chime.play(m_entry, false);
    delete m_entry;
    m_clock.advance(5s);
    EXPECT_EQ(m_chime.look(), std::nullopt);
}

} // namespace
} // namespace vorq
