#include "shell/panel/VerticalScrollLock.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

TEST(SidewaysScroll, IsAtLeastAsFarSidewaysAsUpOrDown) {
    EXPECT_TRUE(isSidewaysScroll(5, 0));
    EXPECT_TRUE(isSidewaysScroll(-5, 5));
    EXPECT_FALSE(isSidewaysScroll(5, -5.1));
    EXPECT_FALSE(isSidewaysScroll(0, 3));
}

TEST(SidewaysScroll, IsNoTremor) {
    EXPECT_FALSE(isSidewaysScroll(0.2, 0));
    EXPECT_TRUE(isSidewaysScroll(0.21, 0));
    EXPECT_FALSE(isSidewaysScroll(0, 0));
}

TEST(HorizontalTray, IsLow) {
    EXPECT_TRUE(isHorizontalTray(139.9));
    EXPECT_FALSE(isHorizontalTray(140));
}

class ScrollerHover : public testing::Test {
  protected:
    QRectF m_view{0, 0, 400, 600};
    // A short one that does not reach the edge.
    QRectF m_scroller{370, 100, 6, 80};

    [[nodiscard]] bool isOn(QPointF point, bool isDragging = false) const {
        return isScrollerHovered(point, m_view, m_scroller, isDragging);
    }
};

TEST_F(ScrollerHover, CoversTheScrollerAndFourPointsRound) {
    EXPECT_TRUE(isOn({372, 140}));
    EXPECT_TRUE(isOn({366, 96}));
    EXPECT_FALSE(isOn({365.9, 140}));
    EXPECT_FALSE(isOn({372, 95.9}));
}

TEST_F(ScrollerHover, CoversTheStripAlongTheRightEdge) {
    EXPECT_TRUE(isOn({382, 500}));
    EXPECT_FALSE(isOn({381.9, 500}));
}

TEST_F(ScrollerHover, EndsAtTheView) {
    EXPECT_FALSE(isOn({400.1, 140}));
    EXPECT_FALSE(isOn({390, -1}));
}

TEST_F(ScrollerHover, IsOffWhileThePanelIsDragged) {
    EXPECT_FALSE(isOn({390, 140}, true));
}

TEST(ContentSnap, TakesTheViewBackToItsLeftEdge) {
    EXPECT_EQ(snappedContentX(12), 0);
    EXPECT_EQ(snappedContentX(-0.06), 0);
    EXPECT_EQ(snappedContentX(0.05), 0.05);
}

} // namespace
} // namespace vorq
