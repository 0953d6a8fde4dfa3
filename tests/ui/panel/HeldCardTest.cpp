// The question about a captured text that reads like a secret.

#include "doubles/ui/PanelStage.h"

#include <QAccessible>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::IsEmpty;

const QString secret = u"kT4vB9nQz2Lm"_s;

class HeldCardTest : public testing::Test {
  protected:
    HeldCardTest() {
        stage.answer("A reply.");
        stage.show();
        QObject::connect(stage.panel.get(), &PanelViewModel::announced,
                         [this](const QString& sentence) { announced += sentence; });
        stage.state->hotKeyContext().held().hold(secret, "Chromium");
        stage.settle(100);
    }

    [[nodiscard]] bool isHeld() { return !stage.state->hotKeyContext().held().isEmpty(); }
    [[nodiscard]] QQuickItem* card() { return stage.find("HeldCard"); }
    [[nodiscard]] QQuickItem* button(const QString& text) {
        for (QQuickItem* item : card()->findChildren<QQuickItem*>())
            if (item->property("text").toString() == text && item->property("help").isValid())
                return item;
        return nullptr;
    }
    [[nodiscard]] QStringList shownTexts() {
        QStringList texts;
        for (QQuickItem* item : card()->findChildren<QQuickItem*>())
            if (item->isVisible()) texts += item->property("text").toString();
        texts.removeAll(QString());
        return texts;
    }
    void click(QQuickItem* item) {
        ASSERT_TRUE(item);
        QTest::mouseClick(stage.window.get(), Qt::LeftButton, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
        stage.settle(50);
    }
    void key(Qt::Key key) {
        QTest::keyClick(stage.window.get(), key);
        stage.settle();
    }
    [[nodiscard]] QString focusedName() {
        QAccessibleInterface* focused =
            QAccessible::queryAccessibleInterface(stage.window->activeFocusItem());
        return focused ? focused->text(QAccessible::Name) : QString();
    }
    void tabTo(const QString& name) {
        for (int i = 0; i < 10 && focusedName() != name; ++i)
            key(Qt::Key_Tab);
        ASSERT_EQ(focusedName(), name);
    }
    [[nodiscard]] bool hasPromptFocus() { return stage.find("Composer")->hasActiveFocus(); }

    PanelStage stage;
    QStringList announced;
};

TEST_F(HeldCardTest, StandsBetweenConversationAndComposerWithDotsForTheText) {
    ASSERT_TRUE(card()->isVisible());
    QQuickItem* composer = stage.find("Composer");
    EXPECT_LE(card()->y() + card()->height(), composer->y());
    EXPECT_GE(card()->y(), stage.list().y() + stage.list().height());
    bool hasDots = false;
    for (QQuickItem* item : stage.root().findChildren<QQuickItem*>()) {
        const QString text = item->property("text").toString();
        EXPECT_FALSE(text.contains(secret));
        hasDots = hasDots || text == u"Held back: ••••••••"_s;
    }
    EXPECT_TRUE(hasDots);
}

TEST_F(HeldCardTest, TheDotsDoNotTellItsLength) {
    const QStringList before = shownTexts();
    EXPECT_THAT(before, testing::Contains(u"Held back: ••••••••"_s));
    stage.state->hotKeyContext().held().hold("g7)Qz<4;Wp,2Kx81 and as much again", "Chromium");
    stage.settle();
    EXPECT_EQ(shownTexts(), before);
}

TEST_F(HeldCardTest, AClickOnSendSendsIt) {
    click(button("Send"));
    stage.clock.settle();
    EXPECT_FALSE(isHeld());
    EXPECT_FALSE(card()->isVisible());
    EXPECT_EQ(stage.transport.last().json()["text"], secret);
    EXPECT_TRUE(hasPromptFocus());
}

TEST_F(HeldCardTest, AClickOnDiscardDropsIt) {
    click(button("Discard"));
    stage.clock.settle();
    EXPECT_FALSE(isHeld());
    EXPECT_FALSE(card()->isVisible());
    EXPECT_EQ(stage.transport.count(), 0U);
    EXPECT_TRUE(hasPromptFocus());
}

TEST_F(HeldCardTest, KeysReachItsButtonsAndUseThem) {
    tabTo("Send what is held back");
    key(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), "Discard what is held back");
    QTest::keyClick(stage.window.get(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focusedName(), "Send what is held back");
    key(Qt::Key_Return);
    EXPECT_FALSE(isHeld());

    stage.state->hotKeyContext().held().hold(secret, "");
    stage.settle();
    tabTo("Discard what is held back");
    key(Qt::Key_Space);
    EXPECT_FALSE(isHeld());
    EXPECT_TRUE(hasPromptFocus());
}

TEST_F(HeldCardTest, WhereItGoesByItselfTheDraftHasTheKeyboard) {
    tabTo("Discard what is held back");
    stage.state->panel().clearPanelChat();
    stage.settle();
    ASSERT_FALSE(card()->isVisible());
    EXPECT_TRUE(hasPromptFocus());
    stage.state->hotKeyContext().held().hold(secret, "");
    stage.settle();
    key(Qt::Key_Space);
    EXPECT_TRUE(isHeld()) << "no button that is gone is pressed";
}

TEST_F(HeldCardTest, EnterInTheEmptyPromptDoesNotSendIt) {
    ASSERT_TRUE(hasPromptFocus());
    key(Qt::Key_Return);
    stage.clock.settle();
    EXPECT_TRUE(isHeld());
    EXPECT_EQ(stage.transport.count(), 0U);
}

TEST_F(HeldCardTest, AScreenReaderIsToldWithoutTheText) {
    ASSERT_EQ(announced.size(), 1);
    EXPECT_EQ(announced[0], "What is highlighted in Chromium reads like a password or a key. It is "
                            "held back: send it or discard it.");
    QAccessibleInterface* group = QAccessible::queryAccessibleInterface(card());
    ASSERT_TRUE(group);
    EXPECT_EQ(group->role(), QAccessible::Grouping);
    EXPECT_EQ(group->text(QAccessible::Name),
              "Held back. What is highlighted in Chromium reads like a password or a key.");
}

TEST_F(HeldCardTest, WithoutAnAccountItIsNotSentAndStays) {
    stage.state->account().markSessionExpired();
    click(button("Send"));
    stage.clock.settle();
    EXPECT_TRUE(isHeld());
    EXPECT_EQ(stage.transport.count(), 0U);
}

TEST_F(HeldCardTest, IsNotThereWithoutSuchAText) {
    stage.state->hotKeyContext().held().discard();
    stage.settle(50);
    EXPECT_FALSE(card()->isVisible());
    EXPECT_GE(stage.list().y() + stage.list().height(), stage.find("Composer")->y() - 1);
    for (int i = 0; i < 8; ++i) {
        key(Qt::Key_Tab);
        EXPECT_FALSE(focusedName().contains("held back"));
    }
}

} // namespace
} // namespace vorq
