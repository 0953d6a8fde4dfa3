// Replies that are read from right to left, and what in them is not.

#include "doubles/ui/PanelStage.h"
#include "ui/reply/ReplyView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr double arabicWidth = 380;

ReplyLayout laidOutArabic(const QString& text) {
    ReplyLayout layout;
    layout.setTheme({Qt::black, Qt::blue, Qt::yellow});
    layout.replace(0, 0, AssistantReplyDocument::blocks(text));
    layout.layOut(arabicWidth, QDeadlineTimer(QDeadlineTimer::Forever));
    return layout;
}

QRectF placeOf(const ReplyLayout& layout, const QString& part, int block = 0) {
    const qsizetype at = layout.block(block).plainText().indexOf(part);
    EXPECT_GE(at, 0) << part.toStdString();
    return layout.firstLineRect({{block, at}, {block, at + part.size()}});
}

const auto sentence = u"استخدم `f()` هنا و `[ab]` هناك."_s;

TEST(RightToLeft, CodeInALineKeepsItsBracketsWhereTheyAre) {
    const ReplyLayout layout = laidOutArabic(sentence);
    const auto caretBefore = [&](const QString& part) {
        return layout.cursorRect({0, layout.block(0).plainText().indexOf(part)}).left();
    };
    EXPECT_LT(caretBefore("("), caretBefore(")"));
    EXPECT_LT(caretBefore("ab"), caretBefore("b"));
    EXPECT_LT(caretBefore("b"), caretBefore("]"));
    EXPECT_GT(layout.cursorRect({0, 0}).left(), arabicWidth / 2);
}

TEST(RightToLeft, ALineThatBeginsWithCodeIsReadAsTheRestOfIt) {
    const ReplyLayout layout = laidOutArabic(u"`int` نوع من الأنواع."_s);
    EXPECT_GT(placeOf(layout, "int").left(), arabicWidth / 2);
}

TEST(RightToLeft, ANumberStandsUnderItsHeader) {
    const ReplyLayout layout =
        laidOutArabic(u"| المدينة | السكان |\n|---|---|\n| تونس | 42 |\n| Paris | 7 |"_s);
    const QRectF header = placeOf(layout, u"السكان"_s);
    EXPECT_NEAR(placeOf(layout, "42").right(), header.right(), 1);
    EXPECT_NEAR(placeOf(layout, "7").right(), header.right(), 1);
    EXPECT_NEAR(placeOf(layout, "Paris").right(), placeOf(layout, u"المدينة"_s).right(), 1);
}

TEST(RightToLeft, ACellFromRightToLeftStandsUnderItsHeaderAtTheLeft) {
    const ReplyLayout layout = laidOutArabic(u"| Word | Meaning |\n|---|---|\n| كتاب | book |"_s);
    EXPECT_NEAR(placeOf(layout, u"كتاب"_s).left(), placeOf(layout, "Word").left(), 1);
}

// The ink of each column of pixels, from the left.
QList<int> inkOf(const QImage& picture) {
    QList<int> columns;
    for (int x = 0; x < picture.width(); ++x) {
        int ink = 0;
        for (int y = 0; y < picture.height(); ++y)
            ink += picture.pixelColor(x, y).alpha() > 60 ? 1 : 0;
        if (ink > 0) columns += ink;
    }
    return columns;
}

TEST(RightToLeft, TheDotOfANumberIsOnItsLeft) {
    const ReplyLayout layout = laidOutArabic(u"1. عنصر\n2. عنصر"_s);
    constexpr int scale = 4;
    QImage picture(18 * scale, 20 * scale, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.scale(scale, scale);
    painter.translate(-(arabicWidth - 18), 0);
    layout.draw(painter, QRectF(0, 0, arabicWidth, 20), {});
    painter.end();
    const QList<int> ink = inkOf(picture);
    ASSERT_GT(ink.size(), 8);
    EXPECT_LT(ink[2], ink[ink.size() - 5] / 2) << "a dot is low, a digit tall";
}

TEST(RightToLeftCopy, CodeIsCopiedAsItWasWritten) {
    PanelStage stage;
    stage.answer(sentence);
    stage.show();
    stage.settle(300);
    auto& view = *qobject_cast<ReplyView*>(stage.find("ReplyView"));
    view.forceActiveFocus();
    QTest::keyClick(stage.window.get(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(stage.window.get(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString(sentence).remove(u'`'));
    EXPECT_EQ(stage.panel->selection()->selectedText(), QString(sentence).remove(u'`'));
}

class RightToLeftKeysTest : public testing::Test {
  protected:
    ReplyView& shown(const QString& text) {
        stage.answer(text);
        stage.show();
        stage.settle(300);
        auto& view = *qobject_cast<ReplyView*>(stage.find("ReplyView"));
        view.forceActiveFocus(Qt::TabFocusReason);
        return view;
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(stage.window.get(), key, modifiers);
    }

    PanelStage stage;
};

// Marks that only order the letters are none that an arrow key stops at.
TEST_F(RightToLeftKeysTest, EachArrowKeyMovesTheCaret) {
    const ReplyView& view = shown(sentence);
    for (int press = 0; press < QString(sentence).remove(u'`').size(); ++press)
        key(Qt::Key_Left);
    EXPECT_EQ(view.selection().cursor(), view.layout().end());
}

TEST_F(RightToLeftKeysTest, ArrowKeysGoWhereTheyGoInTheDraft) {
    const auto text = u"مرحبا يا abc عالم"_s;
    ReplyView& view = shown(text);
    stage.panel->setPrompt(text);
    auto* draft = stage.find("PromptField")->property("input").value<QQuickItem*>();
    ASSERT_TRUE(draft);
    for (const Qt::Key arrow : {Qt::Key_Left, Qt::Key_Right}) {
        draft->setProperty("cursorPosition", 8);
        view.select({0, 8}, {0, 8});
        for (int press = 0; press < 5; ++press) {
            draft->forceActiveFocus(Qt::TabFocusReason);
            key(arrow);
            view.forceActiveFocus(Qt::TabFocusReason);
            key(arrow);
            EXPECT_EQ(view.selection().cursor().offset, draft->property("cursorPosition").toInt())
                << arrow << ", " << press;
        }
    }
}

TEST_F(RightToLeftKeysTest, WordsAreLeftByTheArrowThatPointsPastThem) {
    const ReplyView& view = shown(u"مرحبا يا عالم"_s);
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(view.selection().cursor().offset, 5);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(view.selection().cursor().offset, 0);
}

TEST_F(RightToLeftKeysTest, EachItemOfAListGoesItsOwnWay) {
    const ReplyView& view = shown(u"- عنصر\n- item"_s);
    for (int press = 0; press < 5; ++press)
        key(Qt::Key_Left);
    EXPECT_EQ(view.selection().cursor().offset, 5) << "where the second item begins";
    key(Qt::Key_Right);
    EXPECT_EQ(view.selection().cursor().offset, 6);
}

TEST_F(RightToLeftKeysTest, EnterFollowsTheLinkThatTheCaretIsIn) {
    const ReplyView& view = shown(u"انظر [هنا](https://a.example) يا صديقي"_s);
    QSignalSpy followed(&view, &ReplyView::linkActivated);
    for (int press = 0; press < 5; ++press)
        key(Qt::Key_Left);
    ASSERT_EQ(view.selection().cursor().offset, 5) << "before its first letter";
    key(Qt::Key_Return);
    EXPECT_EQ(followed.count(), 1);
    for (int press = 0; press < 3; ++press)
        key(Qt::Key_Left);
    key(Qt::Key_Return);
    EXPECT_EQ(followed.count(), 1) << "behind its last letter";
}

} // namespace
} // namespace vorq
