#include "doubles/ui/PanelStage.h"
#include "doubles/ui/Samples.h"
#include "ui/reply/ReplyView.h"

#include <QAccessible>
#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class AccessibilityTest : public testing::Test {
  protected:
    AccessibilityTest() { QAccessible::setActive(true); }
    ~AccessibilityTest() override { QAccessible::setActive(false); }

    QAccessibleInterface& element(const QString& type) {
        return *QAccessible::queryAccessibleInterface(stage.find(type));
    }
    ReplyView& shown(const QString& text) {
        stage.answer(text);
        stage.show();
        stage.settle(300);
        return *qobject_cast<ReplyView*>(stage.find("ReplyView"));
    }

    PanelStage stage;
};

TEST_F(AccessibilityTest, AReplyIsReadOffsetByOffset) {
    shown("# Leaves\n\nThey are **green**.\n\n- one\n- two");
    QAccessibleInterface& reply = element("ReplyView");
    EXPECT_EQ(reply.role(), QAccessible::Document);
    EXPECT_EQ(reply.text(QAccessible::Name), "Reply") << "what is read is its text";
    ASSERT_TRUE(reply.parent());
    EXPECT_EQ(reply.parent()->role(), QAccessible::ListItem);
    EXPECT_EQ(reply.parent()->text(QAccessible::Name),
              "Vorq: Leaves\nThey are green.\n• one\n• two");
    EXPECT_GE(reply.parent()->indexOfChild(&reply), 0);

    QAccessibleTextInterface* text = reply.textInterface();
    ASSERT_TRUE(text);
    EXPECT_EQ(text->text(0, text->characterCount()), "Leaves\nThey are green.\none\ntwo");
    EXPECT_EQ(text->text(7, 11), "They");
    int start = 0;
    int end = 0;
    EXPECT_EQ(text->textAtOffset(9, QAccessible::WordBoundary, &start, &end), "They");
    EXPECT_EQ(start, 7);
    EXPECT_EQ(text->text(-5, 2), "Le");
    EXPECT_EQ(text->text(0, 9999).size(), text->characterCount());
}

TEST_F(AccessibilityTest, AnswersWithoutAQuestionHaveANameAllTheSame) {
    stage.answer("A reply.", false, VorqFollowUp{"", {"Shorter", "Longer"}});
    stage.show();
    stage.settle(100);
    EXPECT_EQ(element("FollowUp").role(), QAccessible::Grouping);
    EXPECT_EQ(element("FollowUp").text(QAccessible::Name), "Answers to choose from");
}

TEST_F(AccessibilityTest, CharactersOfAReplyHaveTheirPlaces) {
    ReplyView& view = shown("Leaves are green.\n\nAnd so on.");
    QAccessibleTextInterface* text = element("ReplyView").textInterface();
    const int offset = 18 + 4; // the "s" of the second block
    const QRect place = text->characterRect(offset);
    EXPECT_TRUE(element("ReplyView").rect().contains(place));
    EXPECT_GT(place.top(), text->characterRect(0).bottom());
    EXPECT_GT(place.width(), 3);
    EXPECT_EQ(text->offsetAtPoint(place.center() - QPoint(1, 0)), offset);
    EXPECT_EQ(text->offsetAtPoint(view.mapToGlobal({-50, 0}).toPoint()), -1);
}

TEST_F(AccessibilityTest, AReplyIsSelectedIn) {
    ReplyView& view = shown("Leaves are green.\n\nAnd so on.");
    QAccessibleTextInterface* text = element("ReplyView").textInterface();
    EXPECT_EQ(text->selectionCount(), 0);
    text->addSelection(7, 21);
    EXPECT_EQ(view.selectedText(), "are green.\nAnd");
    EXPECT_EQ(text->selectionCount(), 1);
    int start = 0;
    int end = 0;
    text->selection(0, &start, &end);
    EXPECT_EQ(start, 7);
    EXPECT_EQ(end, 21);
    EXPECT_EQ(text->cursorPosition(), 21);
    text->removeSelection(0);
    EXPECT_FALSE(view.hasSelection());
}

TEST_F(AccessibilityTest, AnEmptyReplyHasNoCharacters) {
    shown("");
    QAccessibleTextInterface* text = element("ReplyView").textInterface();
    EXPECT_EQ(text->characterCount(), 0);
    EXPECT_EQ(text->text(0, 5), "");
    EXPECT_EQ(text->cursorPosition(), 0);
    static_cast<void>(text->characterRect(0));
    text->setCursorPosition(4);
    EXPECT_EQ(text->cursorPosition(), 0);
}

TEST_F(AccessibilityTest, AReplyIsSaidOnceItIsComplete) {
    stage.show();
    QQuickItem& announcer = *stage.find("Announcer");
    const auto said = [&] {
        QStringList sentences;
        for (QQuickItem* item : announcer.childItems()) {
            QAccessibleInterface* element = QAccessible::queryAccessibleInterface(item);
            if (item->isVisible() && element && element->role() == QAccessible::Notification)
                sentences += element->text(QAccessible::Name);
        }
        return sentences;
    };
    EXPECT_EQ(said(), QStringList());
    const QUuid id = stage.work();
    EXPECT_EQ(said(), QStringList("Working..."));
    stage.grow(id, "They are *green*.");
    stage.settle();
    EXPECT_EQ(said(), QStringList("Working..."));
    VorqMessage message = *stage.state->panel().messages().find(id);
    message.isTyping = false;
    stage.state->panel().messages().update(message);
    stage.settle();
    EXPECT_EQ(said(), QStringList("They are green."));
}

} // namespace
} // namespace vorq
