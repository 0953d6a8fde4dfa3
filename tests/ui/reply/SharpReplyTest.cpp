// A reply stands on whole pixels of the screen, wherever it is, so that its text is sharp. Run at
// several scales, with and without a graphics card.

#include "doubles/ui/PanelStage.h"
#include "doubles/ui/Samples.h"
#include "ui/reply/ReplyView.h"

#include <QPainter>
#include <QTest>

#include <gmock/gmock.h>

#include <cmath>

namespace vorq {
namespace {

constexpr int leeway = 4; // of 255
constexpr int textWidth = 260;
constexpr QSize windowSize(320, 240);

QImage onWhite(const QImage& picture) {
    QImage result(picture.size(), QImage::Format_RGB32);
    result.fill(Qt::white);
    QPainter(&result).drawImage(QRect(QPoint(), picture.size()), picture);
    return result;
}

// As it is without a screen.
QImage painted(const ReplyView& view, double scale) {
    const QRectF all(0, 0, view.width(), view.layout().height());
    QImage picture((all.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(scale, scale);
    view.layout().draw(painter, all, {});
    painter.end();
    return onWhite(picture);
}

int largestDifference(const QImage& one, const QImage& other) {
    int largest = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x)
            largest =
                std::max(largest, std::abs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y))));
    return largest;
}

bool isWhole(double pixels) {
    return std::abs(pixels - std::round(pixels)) < 1e-6;
}

class SharpReply : public testing::TestWithParam<QPointF> {};

TEST_P(SharpReply, LooksAsItIsPaintedWhereverItStands) {
    QQuickWindow window;
    window.setColor(Qt::white);
    window.resize(windowSize);
    ReplyView view(window.contentItem());
    view.setPosition(GetParam());
    view.setSize({textWidth, 200});
    view.setViewHeight(200);
    view.setRaw("Light **carries** energy to `the leaf`, and the leaf keeps it.\n\n- one\n- two");
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const double scale = window.effectiveDevicePixelRatio();
    const QImage expected = painted(view, scale);
    const QPointF at = GetParam() * scale;
    const QImage shown =
        window.grabWindow().copy(QRect(QPoint(qRound(at.x()), qRound(at.y())), expected.size()));
    EXPECT_LE(largestDifference(onWhite(shown), expected), leeway);
}

INSTANTIATE_TEST_SUITE_P(Places, SharpReply,
                         testing::Values(QPointF(8, 8), QPointF(10.3, 20.7), QPointF(9.6, 11.4),
                                         QPointF(17.25, 30.1)));

TEST(SharpReplies, StandOnWholePixelsWhileTheyAreScrolled) {
    PanelStage stage;
    stage.say("A question.");
    stage.answer(samples::leaves);
    stage.show();
    stage.settle(400);
    stage.list().setProperty("follows", false);
    QQuickItem* canvas = stage.find("ReplyCanvas");
    const double scale = stage.window->effectiveDevicePixelRatio();
    for (const double y : {0.0, 10.0, 10.3, 57.7, 301.45, 302.1}) {
        stage.list().setProperty("contentY", y);
        stage.settle(50);
        stage.window->grabWindow();
        const QPointF at = canvas->mapToScene({0, 0}) * scale;
        EXPECT_TRUE(isWhole(at.x())) << at.x() << " at " << y;
        EXPECT_TRUE(isWhole(at.y())) << at.y() << " at " << y;
    }
}

} // namespace
} // namespace vorq
