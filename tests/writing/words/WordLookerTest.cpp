#include "doubles/capture/CaptureFixture.h"
#include "writing/words/AccessibleWordLooker.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using Frames = WordLooker::Frames;

// "dog" and "cat" of "The dog and the cat" are looked for; it begins at the fifth character.
class WordLookerTest : public CaptureTest {
  protected:
    WordLookerTest() {
        ScriptedElement& field = focus();
        field.content = u"So: The dog and the cat."_s;
        field.origin = QPointF(100, 100);
        field.extent = QSizeF(400, 300);
        put(8, 3, {150, 200, 30, 20});
        put(20, 3, {260, 200, 30, 20});
        sought.source = source;
    }

    void put(std::int64_t location, std::int64_t length, const QRectF& frame) {
        auto& bounds = focus().bounds;
        const auto set = [&](TextRange range, const QRectF& at) {
            std::erase_if(bounds, [&](const auto& entry) { return entry.first == range; });
            bounds.emplace_back(range, at);
        };
        set({.location = location, .length = length}, frame);
        set({.location = location, .length = 1},
            {frame.x(), frame.y(), 10, std::min(frame.height(), 20.0)});
    }
    std::optional<Frames> look() {
        return Running<std::optional<Frames>>(looker.look(sought, stop.get_token())).result();
    }

    WordsSought sought{.source = {},
                       .selection = u"The dog and the cat"_s,
                       .selected = {.location = 4, .length = 19},
                       .words = {{.location = 4, .length = 3}, {.location = 16, .length = 3}}};
    AccessibleWordLooker looker{{captures->reader, captures->gate, screens}};
    const QRectF dog{150, 580, 30, 20}; // on a screen of 800 points
    const QRectF cat{260, 580, 30, 20};
};

TEST_F(WordLookerTest, TellsWhereTheWordsAre) {
    EXPECT_EQ(look(), (Frames{dog, cat}));
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(WordLookerTest, WordsThatAreNotToBeSeenHaveNoPlace) {
    for (const QRectF& frame :
         {QRectF(), QRectF(0, 0, 0, 0), QRectF(150, 200, 0.4, 20), QRectF(150, 200, 30, 2),
          QRectF(150, 50, 30, 20), QRectF(150, 395, 30, 20), QRectF(80, 200, 30, 20),
          QRectF(480, 200, 30, 20), QRectF(-1e9, -1e9, 30, 20), QRectF(150, 200, qInf(), 20),
          QRectF(qQNaN(), 200, 30, 20), QRectF(150, 200, 30, 5000)}) {
        put(8, 3, frame);
        EXPECT_EQ(look(), (Frames{std::nullopt, cat})) << frame.x() << " " << frame.y();
    }
}

TEST_F(WordLookerTest, AWordOnTwoLinesHasNoPlace) {
    put(8, 3, {110, 200, 380, 42});
    EXPECT_EQ(look(), (Frames{std::nullopt, cat}));
}

TEST_F(WordLookerTest, TheWindowBoundsThemToo) {
    accessibility.focusedWindowName = u"window"_s;
    ScriptedElement& window = accessibility.element(u"window"_s);
    window.origin = QPointF(100, 100);
    window.extent = QSizeF(120, 300);
    EXPECT_EQ(look(), (Frames{dog, std::nullopt}));
}

TEST_F(WordLookerTest, WhereTheTextIsAnotherNoWordIsSeen) {
    focus().content = u"So: The dog and the cow."_s;
    EXPECT_EQ(look(), (Frames{std::nullopt, std::nullopt}));
    focus().content.reset();
    EXPECT_EQ(look(), (Frames{std::nullopt, std::nullopt}));
}

TEST_F(WordLookerTest, WithoutAFrameOfTheFieldNoneIsSeen) {
    focus().extent.reset();
    EXPECT_EQ(look(), (Frames{std::nullopt, std::nullopt}));
}

TEST_F(WordLookerTest, PasswordsAreNotLookedAt) {
    focus().hidesText = true;
    EXPECT_EQ(look(), (Frames{std::nullopt, std::nullopt}));
}

TEST_F(WordLookerTest, NobodyIsAskedWhoMustNotBe) {
    accessibility.trusted = false;
    const qsizetype reads = accessibility.reads().size();
    EXPECT_EQ(look(), std::nullopt);
    sought.source.reset();
    EXPECT_EQ(look(), std::nullopt);
    EXPECT_EQ(accessibility.reads().size(), reads);
}

TEST_F(WordLookerTest, AnApplicationThatHangsIsGivenUp) {
    accessibility.hangs = true;
    const Running<std::optional<Frames>> running(looker.look(sought, stop.get_token()));
    while (accessibility.hanging == 0)
        Running<std::optional<Frames>>::turnOnce();
    clock.advance(AccessibleWordLooker::readLimit);
    EXPECT_EQ(running.result(), std::nullopt);
}

} // namespace
} // namespace vorq
