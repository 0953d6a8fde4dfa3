#include "platform/linux/wayland/WaylandFrontmost.h"

#include "platform/testing/ManualClock.h"

#include <gmock/gmock.h>

#include <vector>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t vorqItself = 1;
constexpr std::int32_t textEditor = 7;
constexpr std::int32_t webBrowser = 8;
// What is told of a loss.
constexpr std::int32_t nobody = 0;

class WaylandFrontmostTest : public testing::Test {
  protected:
    WaylandFrontmostTest() {
        QObject::connect(&m_frontmost, &WaylandFrontmost::changed,
                         [this](std::int32_t process) { m_told.push_back(process); });
        QObject::connect(&m_frontmost, &WaylandFrontmost::lost,
                         [this] { m_told.push_back(nobody); });
    }

    ManualClock m_clock;
    WaylandFrontmost m_frontmost{m_clock, vorqItself};
    std::vector<std::int32_t> m_told;
};

TEST_F(WaylandFrontmostTest, IsWhoSaysSo) {
    EXPECT_EQ(m_frontmost.process(), std::nullopt);
    m_frontmost.setForeign(textEditor);
    m_frontmost.setForeign(webBrowser);
    EXPECT_EQ(m_frontmost.process(), webBrowser);
    EXPECT_THAT(m_told, ElementsAre(textEditor, webBrowser));
}

TEST_F(WaylandFrontmostTest, IsVorqWhileItHasTheKeyboardThoughAnotherHasNotToldOfItsLoss) {
    m_frontmost.setForeign(textEditor);
    m_frontmost.setVorqActive(true);
    EXPECT_EQ(m_frontmost.process(), vorqItself);
    m_frontmost.setForeign(std::nullopt);
    EXPECT_THAT(m_told, ElementsAre(textEditor, vorqItself));
}

TEST_F(WaylandFrontmostTest, IsUnknownAtOnceWhenNobodySaysSo) {
    m_frontmost.setForeign(textEditor);
    m_frontmost.setForeign(std::nullopt);
    EXPECT_EQ(m_frontmost.process(), std::nullopt);
}

TEST_F(WaylandFrontmostTest, IsLostWhenThatIsMoreThanAHandover) {
    m_frontmost.setForeign(textEditor);
    m_frontmost.setForeign(std::nullopt);
    m_clock.advance(WaylandFrontmost::handover - 1ms);
    EXPECT_THAT(m_told, ElementsAre(textEditor));
    m_clock.advance(1ms);
    EXPECT_THAT(m_told, ElementsAre(textEditor, nobody));
}

TEST_F(WaylandFrontmostTest, AHandoverToVorqIsNoLoss) {
    m_frontmost.setForeign(textEditor);
    m_frontmost.setForeign(std::nullopt);
    m_clock.advance(50ms);
    m_frontmost.setVorqActive(true);
    m_clock.advance(1s);
    EXPECT_THAT(m_told, ElementsAre(textEditor, vorqItself));
}

TEST_F(WaylandFrontmostTest, TellsNothingOnceGone) {
    {
        WaylandFrontmost gone(m_clock, vorqItself);
        gone.setForeign(textEditor);
        gone.setForeign(std::nullopt);
    }
    m_clock.advance(1s);
    EXPECT_THAT(m_told, IsEmpty());
}

} // namespace
} // namespace vorq
