#include "shell/panel/AttachTrayState.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace vorq {
namespace {

using Mode = AttachTrayState::Mode;

TEST(AttachTrayStateTest, ItOpensAtItsRoot) {
    AttachTrayState tray;
    tray.setShown(true);
    tray.setMode(Mode::Notes);
    tray.setShown(false);
    tray.setShown(true);
    EXPECT_EQ(tray.mode(), Mode::Root);
}

TEST(AttachTrayStateTest, ItClosesFromWithin) {
    AttachTrayState tray;
    EXPECT_FALSE(tray.closeInnermost());
    tray.setShown(true);
    tray.setMode(Mode::Notes);
    const QSignalSpy shown(&tray, &AttachTrayState::shownChanged);
    EXPECT_TRUE(tray.closeInnermost());
    EXPECT_EQ(tray.mode(), Mode::Root);
    EXPECT_EQ(shown.count(), 0);
    EXPECT_TRUE(tray.closeInnermost());
    EXPECT_FALSE(tray.isShown());
    EXPECT_FALSE(tray.closeInnermost());
}

} // namespace
} // namespace vorq
