#include "shell/status/StatusFlash.h"
#include "platform/testing/ManualClock.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class StatusFlashTest : public testing::Test {
  protected:
    ManualClock m_clock;
    std::vector<StatusImage> m_shown;
    std::unique_ptr<StatusFlash> m_flash = std::make_unique<StatusFlash>(
        m_clock, [this](StatusImage image) { m_shown.push_back(image); });
};

TEST_F(StatusFlashTest, TheGlyphComesBackAfterAWhile) {
    m_flash->flash(StatusImage::Check);
    m_clock.advance(2199ms);
    EXPECT_THAT(m_shown, ElementsAre(StatusImage::Check));
    m_clock.advance(1ms);
    EXPECT_THAT(m_shown, ElementsAre(StatusImage::Check, StatusImage::Glyph));
}

TEST_F(StatusFlashTest, OfTwoFlashesOnlyTheSecondRestores) {
    m_flash->flash(StatusImage::Check);
    m_clock.advance(1s);
    m_flash->flash(StatusImage::Fail);
    m_clock.advance(2199ms);
    EXPECT_THAT(m_shown, ElementsAre(StatusImage::Check, StatusImage::Fail));
    m_clock.advance(10s);
    EXPECT_THAT(m_shown, ElementsAre(StatusImage::Check, StatusImage::Fail, StatusImage::Glyph));
}

TEST_F(StatusFlashTest, GoneDuringAFlashItRestoresNothing) {
    m_flash->flash(StatusImage::Check);
    m_flash.reset();
    m_clock.advance(10s);
    EXPECT_THAT(m_shown, ElementsAre(StatusImage::Check));
}

} // namespace
} // namespace vorq
