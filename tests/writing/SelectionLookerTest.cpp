#include "doubles/capture/CaptureFixture.h"
#include "writing/AccessibleSelectionLooker.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using Sight = std::optional<SelectionSight>;

class SelectionLookerTest : public CaptureTest {
  protected:
    Running<Sight> begin() { return Running<Sight>(looker.look(source, {}, stop.get_token())); }
    Sight look() { return begin().result(); }

    AccessibleSelectionLooker looker{{captures->reader, captures->gate, screens}};
};

TEST_F(SelectionLookerTest, SeesTheSelectionAndItsPlace) {
    select(" some text\n");
    focus().bounds.push_back({*focus().range, {100, 200, 300, 20}});
    const Sight sight = look();
    ASSERT_TRUE(sight);
    EXPECT_EQ(sight->text, " some text\n");
    ASSERT_TRUE(sight->placement);
    EXPECT_EQ(sight->placement->screenFrame, QRectF(100, 580, 300, 20));
    EXPECT_EQ(sight->placement->clickPoint, QPointF(250, 590));
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(SelectionLookerTest, SeesATextWithoutAPlace) {
    select("some text");
    EXPECT_EQ(look(), (SelectionSight{.text = "some text", .placement = {}}));
}

TEST_F(SelectionLookerTest, SeesNothingWhereNothingIsSelected) {
    select(" \n");
    EXPECT_EQ(look(), std::nullopt);
    accessibility.focusedName.reset();
    EXPECT_EQ(look(), std::nullopt);
}

TEST_F(SelectionLookerTest, SeesThatNothingIsSelectedWhereTheApplicationSaysSo) {
    select("");
    EXPECT_EQ(look(), SelectionSight{});
}

TEST_F(SelectionLookerTest, SeesNoPasswordsAndNoBullets) {
    select("secret");
    focus().hidesText = true;
    EXPECT_EQ(look(), std::nullopt);
    focus().hidesText = false;
    select(u"••••••••"_s);
    EXPECT_EQ(look(), std::nullopt);
}

TEST_F(SelectionLookerTest, AsksNobodyWhoMustNotBeAsked) {
    select("some text");
    accessibility.trusted = false;
    EXPECT_EQ(look(), std::nullopt);
    EXPECT_TRUE(accessibility.reads().isEmpty());
}

TEST_F(SelectionLookerTest, AnApplicationThatHangsEndsTheLookInTime) {
    select("some text");
    accessibility.hangs = true;
    const Running<Sight> looking = begin();
    waitUntilHanging();
    EXPECT_FALSE(looking.hasEnded());
    clock.advance(AccessibleSelectionLooker::readLimit);
    EXPECT_EQ(looking.result(), std::nullopt);
}

} // namespace
} // namespace vorq
