// How the conversation is moved through by the keyboard.

#include "doubles/ui/PanelStage.h"
#include "doubles/ui/Samples.h"
#include "ui/reply/ReplyView.h"

#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class ConversationKeysTest : public testing::Test {
  protected:
    void show(const QString& reply) {
        stage.answer(reply);
        stage.show();
        stage.settle(500);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(stage.window.get(), key, modifiers);
        stage.settle(20);
    }
    [[nodiscard]] double y() { return stage.list().property("contentY").toDouble(); }
    [[nodiscard]] double top() { return stage.list().property("topY").toDouble(); }
    [[nodiscard]] double bottom() { return stage.list().property("bottomY").toDouble(); }
    [[nodiscard]] bool isInView(const QQuickItem& item) {
        const QRectF at = item.mapRectToItem(&stage.list(), item.boundingRect());
        return at.intersects(QRectF(0, 0, stage.list().width(), stage.list().height()));
    }
    [[nodiscard]] QQuickItem& holder() { return *stage.window->activeFocusItem(); }

    PanelStage stage;
};

TEST_F(ConversationKeysTest, PagesAreTurnedFromTheDraft) {
    show(QString(samples::leaves).repeated(3));
    stage.panel->setPrompt("a draft");
    const double end = y();
    key(Qt::Key_PageUp);
    EXPECT_LT(y(), end - 300);
    key(Qt::Key_PageDown);
    EXPECT_NEAR(y(), end, 2);
    EXPECT_EQ(stage.panel->prompt(), "a draft");
}

TEST_F(ConversationKeysTest, ItsEndsAreReachedFromTheEmptyDraft) {
    show(QString(samples::leaves).repeated(3));
    key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_NEAR(y(), top(), 2);
    key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_NEAR(y(), bottom(), 2);
}

TEST_F(ConversationKeysTest, ADraftUsesTheKeysToItsOwnEndsFirst) {
    show(QString(samples::leaves).repeated(3));
    stage.panel->setPrompt("a draft");
    stage.settle(20);
    const double end = y();
    key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(holder().property("cursorPosition").toInt(), 0);
    EXPECT_EQ(y(), end);
    key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_NEAR(y(), top(), 2) << "there it is already";
    key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(holder().property("cursorPosition").toInt(), 7);
    EXPECT_NEAR(y(), top(), 2);
    key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_NEAR(y(), bottom(), 2);
}

TEST_F(ConversationKeysTest, PagesAreTurnedFromTheButtonsOfTheComposer) {
    show(QString(samples::leaves).repeated(3));
    key(Qt::Key_Tab);
    const double end = y();
    key(Qt::Key_PageUp);
    EXPECT_LT(y(), end - 300);
}

// Buttons of code come and go as it is scrolled; Tab visits each once and leads out again.
TEST_F(ConversationKeysTest, TabLeadsThroughAllCodeOfALongReplyAndOut) {
    QString reply;
    for (int i = 0; i < 12; ++i)
        reply += QString("Part %1.\n\n```\n").arg(i) + QString("line\n").repeated(18) + "```\n\n";
    show(reply);
    const QQuickItem* field = &holder();
    key(Qt::Key_Home, Qt::ControlModifier);
    key(Qt::Key_Tab);
    QList<double> tops;
    int presses = 0;
    do {
        key(Qt::Key_Tab);
        ++presses;
        if (&holder() == field) break;
        EXPECT_TRUE(isInView(holder())) << presses;
        if (holder().property("text").toString() == "Copy code")
            tops += holder().mapToItem(stage.find("ReplyView"), {0, 0}).y();
    } while (presses < 60);
    EXPECT_EQ(&holder(), field) << "after " << presses;
    EXPECT_EQ(tops.size(), 12);
    EXPECT_TRUE(std::ranges::is_sorted(tops));
    EXPECT_TRUE(std::ranges::adjacent_find(tops) == tops.end());
}

TEST_F(ConversationKeysTest, TabLeadsOnWhereWhatHadTheKeyboardIsScrolledAway) {
    for (int i = 0; i < 8; ++i)
        stage.answer(QString(samples::leaves).repeated(2));
    show("The latest.");
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    ASSERT_TRUE(qobject_cast<ReplyView*>(&holder()));
    for (int page = 0; page < 12; ++page)
        key(Qt::Key_PageUp);
    key(Qt::Key_Tab);
    EXPECT_TRUE(&holder() == stage.find("PromptField")->property("input").value<QQuickItem*>() ||
                isInView(holder()))
        << holder().metaObject()->className();
    key(Qt::Key_X);
    EXPECT_EQ(stage.panel->prompt().toLower(), "x");
}

} // namespace
} // namespace vorq
