#include "platform/linux/x11/Struts.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

using Edge = Strut::Edge;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr QSize desktop(3200, 1080);
constexpr QRect left(0, 0, 1920, 1080);
// Lower than the desktop.
constexpr QRect right(1920, 0, 1280, 800);

TEST(ReadStruts, TakesTheStretchThatABarDeclares) {
    EXPECT_THAT(readStruts({0, 0, 30, 0, 0, 0, 0, 0, 1920, 3199, 0, 0}, {0, 0, 30, 0}, desktop),
                ElementsAre(Strut{Edge::Top, 30, 1920, 3199}));
}

TEST(ReadStruts, TakesTheWholeEdgeOtherwise) {
    EXPECT_THAT(readStruts({}, {24, 0, 0, 40}, desktop),
                ElementsAre(Strut{Edge::Left, 24, 0, 1079}, Strut{Edge::Bottom, 40, 0, 3199}));
}

TEST(ReadStruts, OfDamagedNumbersAreNone) {
    EXPECT_THAT(readStruts({1, 2, 3}, {1}, desktop), IsEmpty());
    EXPECT_THAT(readStruts({}, {0xffffffff, 0, 0, 0}, desktop), IsEmpty());
}

TEST(ReadStruts, NoneReachesBeyondTheDesktop) {
    constexpr std::uint32_t most = 0x7fffffff;
    EXPECT_THAT(readStruts({0, 0, 30, 0, 0, 0, 0, 0, 0, most, 0, 0}, {}, desktop),
                ElementsAre(Strut{Edge::Top, 30, 0, 3199}));
    EXPECT_THAT(readStruts({0, most, 0, 0, 0, 0, 0x80000000, most, 0, 0, 0, 0}, {}, desktop),
                ElementsAre(Strut{Edge::Right, 3200, 0, 1079}));
}

TEST(FreeOfStruts, IsTheWholeMonitorWithoutBars) {
    EXPECT_EQ(freeOfStruts(left, desktop, {}), left);
}

TEST(FreeOfStruts, LeavesOutABarOnItsOwnMonitorOnly) {
    const std::vector<Strut> bar{{Edge::Bottom, 40, 0, 1919}};
    EXPECT_EQ(freeOfStruts(left, desktop, bar), QRect(0, 0, 1920, 1040));
    EXPECT_EQ(freeOfStruts(right, desktop, bar), right);
}

TEST(FreeOfStruts, MeasuresFromTheEdgeOfTheDesktop) {
    // 30 pixels on a monitor whose lower edge is 280 above that of the desktop.
    const std::vector<Strut> bar{{Edge::Bottom, 310, 1920, 3199}};
    EXPECT_EQ(freeOfStruts(right, desktop, bar), QRect(1920, 0, 1280, 770));
}

TEST(FreeOfStruts, AddsUpBarsOfDifferentEdges) {
    const std::vector<Strut> bars{{Edge::Top, 30, 0, 1919}, {Edge::Left, 60, 0, 1079}};
    EXPECT_EQ(freeOfStruts(left, desktop, bars), QRect(60, 30, 1860, 1050));
}

TEST(FreeOfStruts, IgnoresABarBetweenTheMonitorsOnTheOuterOne) {
    // At the right edge of the left monitor.
    const std::vector<Strut> bar{{Edge::Right, 1280 + 50, 0, 799}};
    EXPECT_EQ(freeOfStruts(left, desktop, bar), QRect(0, 0, 1870, 1080));
    EXPECT_EQ(freeOfStruts(right, desktop, bar), right);
}

} // namespace
} // namespace vorq
