// What a designer looks for in the panel.

#include "doubles/ui/PanelStage.h"
#include "doubles/ui/Samples.h"
#include "ui/reply/ReplyView.h"

#include "areas/AppearanceSettings.h"
#include "shell/look/Contrast.h"

#include <QImage>
#include <QPainter>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class ReplyLooksTest : public testing::Test {
  protected:
    [[nodiscard]] QRectF inScene(const QQuickItem& item) {
        return item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
    }
    [[nodiscard]] QImage over(const QColor& behind) {
        stage.window->setColor(behind);
        stage.settle(200);
        return stage.window->grabWindow();
    }
    // The ring that is seen.
    [[nodiscard]] QRectF ring() {
        for (QQuickItem* item : stage.findAll("FocusRing"))
            if (item->isVisible()) return inScene(*item);
        return {};
    }

    PanelStage stage;
};

TEST_F(ReplyLooksTest, WithoutBlurNothingBehindThePanelIsSeenButAtItsEdge) {
    for (const auto appearance : {PanelAppearance::Current, PanelAppearance::White}) {
        stage.state->appearance().setPanelAppearance(appearance);
        stage.look->setTier(PanelLook::Tier::NoBlur);
        stage.answer(samples::leaves);
        stage.show();
        stage.find("Composer")->setProperty("enabled", false); // its caret blinks
        stage.settle(600);
        const QRect inside(14, 14, 412, 722);
        EXPECT_EQ(over(Qt::white).copy(inside), over(Qt::black).copy(inside));
    }
}

TEST_F(ReplyLooksTest, TheLightPanelHasAnEdgeOnWhite) {
    stage.state->appearance().setPanelAppearance(PanelAppearance::White);
    stage.look->setTier(PanelLook::Tier::NoBlur);
    stage.show();
    const QImage shown = over(Qt::white);
    for (const QPoint at : {QPoint(220, 0), QPoint(0, 375), QPoint(439, 375), QPoint(220, 749)})
        EXPECT_GT(Contrast::ratio(shown.pixelColor(at), Qt::white), 1.6)
            << at.x() << ", " << at.y();
}

TEST_F(ReplyLooksTest, TheFocusRingOfAReplyIsRoundItsBubble) {
    for (const QString& text : {u"Short."_s, QString(samples::leaves)}) {
        PanelStage other;
        stage.state->panel().messages().clear();
        stage.answer(text);
        stage.show();
        stage.settle(400);
        stage.find("ReplyView")->forceActiveFocus(Qt::TabFocusReason);
        stage.settle(50);
        QQuickItem* reply = stage.find("AssistantReply");
        const QQuickItem* plate = reply->childItems().front();
        QRectF bubble = inScene(*plate);
        bubble.setTop(inScene(*reply).top());
        bubble.setBottom(inScene(*reply).bottom());
        EXPECT_EQ(ring(), bubble.adjusted(-4, -4, 4, 4)) << "2 wide at a distance of 2";
    }
}

TEST_F(ReplyLooksTest, TheCaretStandsClearOfThePlaceholder) {
    stage.show();
    stage.settle(50);
    const QQuickItem* field = stage.find("PromptField");
    const QString words = field->property("placeholder").toString();
    const QQuickItem* placeholder = nullptr;
    for (QQuickItem* item : stage.findAll("Txt"))
        if (item->property("text").toString() == words) placeholder = item;
    const QQuickItem* caret = nullptr;
    for (QQuickItem* item : stage.window->activeFocusItem()->childItems())
        if (item->width() == 2) caret = item;
    ASSERT_TRUE(placeholder && caret);
    EXPECT_GE(inScene(*placeholder).left(), inScene(*caret).right() + 1);
}

TEST_F(ReplyLooksTest, AClipToDeepenShowsItsExcerpt) {
    auto& view = *[this] {
        stage.answer("Leaves are green.");
        stage.show();
        stage.settle(300);
        return qobject_cast<ReplyView*>(stage.find("ReplyView"));
    }();
    view.forceActiveFocus();
    QTest::keyClick(stage.window.get(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(stage.window.get(), Qt::Key_Return);
    stage.settle(50);
    EXPECT_EQ(stage.find("AttachmentClip")->property("label").toString(), "Leaves are green.");
}

TEST(CodeLooks, LinesThatGoOnFadeOutAtTheEdge) {
    constexpr double width = 380;
    ReplyLayout layout;
    layout.setTheme({Qt::black, Qt::blue, Qt::yellow});
    layout.replace(0, 0, AssistantReplyDocument::blocks("```\n" + QString(400, u'M') + "\n```"));
    layout.layOut(width, QDeadlineTimer(QDeadlineTimer::Forever));
    const auto darkest = [&](int fromX, int toX) {
        QImage picture(380, 40, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        layout.draw(painter, QRectF(0, 0, width, 40), {});
        painter.end();
        int darkest = 255;
        for (int x = fromX; x < toX; ++x)
            for (int y = 0; y < picture.height(); ++y)
                darkest = std::min(darkest, picture.pixelColor(x, y).lightness());
        return darkest;
    };
    EXPECT_LT(darkest(150, 200), 60);
    EXPECT_GT(darkest(364, 370), 150) << "at the right, where they go on";
    EXPECT_LT(darkest(10, 24), 60) << "at the left they begin";
    layout.scrollAt({20, 15}, 200);
    EXPECT_GT(darkest(10, 16), 150) << "they began further left";
    layout.scrollAt({20, 15}, 1e6);
    EXPECT_LT(darkest(356, 370), 60) << "there they end";
}

} // namespace
} // namespace vorq
