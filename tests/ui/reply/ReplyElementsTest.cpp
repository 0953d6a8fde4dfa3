// What a screen reader finds beneath a reply.

#include "doubles/ui/PanelStage.h"
#include "ui/reply/ReplyView.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::ElementsAre;

class ReplyElementsTest : public testing::Test {
  protected:
    ReplyElementsTest() { QAccessible::setActive(true); }
    ~ReplyElementsTest() override { QAccessible::setActive(false); }

    static std::string roleName(QAccessibleInterface& element) {
        return QMetaEnum::fromType<QAccessible::Role>().valueToKey(element.role());
    }
    QAccessibleInterface& shown(const QString& reply, QSize size = {440, 750}) {
        m_id = stage.answer(reply);
        stage.show(size);
        stage.settle(300);
        return *QAccessible::queryAccessibleInterface(&view());
    }
    ReplyView& view() { return *qobject_cast<ReplyView*>(stage.find("ReplyView")); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(stage.window.get(), key, modifiers);
        stage.settle(10);
    }
    /// Tabs from the draft to the reply.
    void tabToReply() {
        key(Qt::Key_Tab);
        key(Qt::Key_Tab);
        ASSERT_TRUE(view().hasActiveFocus());
    }
    /// The elements below one, as an outline.
    static std::vector<std::string> outline(QAccessibleInterface& element, int depth = 0) {
        std::vector<std::string> lines;
        for (int i = 0; i < element.childCount(); ++i) {
            QAccessibleInterface& child = *element.child(i);
            EXPECT_EQ(element.indexOfChild(&child), i);
            EXPECT_EQ(child.parent(), &element);
            QAccessibleTextInterface* text = child.textInterface();
            lines.push_back(std::string(static_cast<std::size_t>(depth), ' ') + roleName(child) +
                            " [" + child.text(QAccessible::Name).toStdString() + "]" +
                            (text ? " " + text->text(0, -1).toStdString() : ""));
            const std::vector<std::string> below = outline(child, depth + 1);
            lines.insert(lines.end(), below.begin(), below.end());
        }
        return lines;
    }

    PanelStage stage;
    QUuid m_id;
};

TEST_F(ReplyElementsTest, EachBlockIsAnElementOfItsKind) {
    QAccessibleInterface& reply =
        shown("# Leaves\n\nThey are **green**.\n\n## Why\n\n- one\n- two\n\n1. first\n2. second\n\n"
              "> said so\n\n---\n\n```\na = 1\nb = 2\n```");
    EXPECT_THAT(outline(reply),
                ElementsAre("Heading [Leaves] Leaves", "Paragraph [] They are green.",
                            "Heading [Why] Why",                                     //
                            "List []", " ListItem [one] one", " ListItem [two] two", //
                            "List []", " ListItem [1. first] first",                 //
                            " ListItem [2. second] second",                          //
                            "Grouping [Quotation]", " Paragraph [] said so",         //
                            "Separator []",                                          //
                            "Grouping [Code]", " Paragraph [] a = 1\nb = 2"));
    EXPECT_EQ(reply.child(0)->text(QAccessible::Description), "Level 1");
    EXPECT_EQ(reply.child(2)->text(QAccessible::Description), "Level 2");
}

TEST_F(ReplyElementsTest, ElementsAreWhereTheirTextIs) {
    QAccessibleInterface& reply = shown("# Leaves\n\nThey are green.\n\n- one\n- two");
    int below = reply.rect().top() - 1;
    for (QAccessibleInterface* element :
         {reply.child(0), reply.child(1), reply.child(2)->child(0), reply.child(2)->child(1)}) {
        EXPECT_GE(element->rect().top(), below);
        EXPECT_GT(element->rect().height(), 10);
        EXPECT_TRUE(reply.rect().adjusted(-1, -1, 1, 1).contains(element->rect()));
        EXPECT_TRUE(element->rect().contains(element->textInterface()->characterRect(1)));
        const QPoint middle = element->rect().center();
        QAccessibleInterface* found = reply.childAt(middle.x(), middle.y());
        EXPECT_TRUE(found == element || found->childAt(middle.x(), middle.y()) == element);
        EXPECT_FALSE(element->state().offscreen);
        below = element->rect().bottom() - 1;
    }
}

TEST_F(ReplyElementsTest, ATableHasRowsCellsAndHeaders) {
    QAccessibleInterface& reply = shown("| Day | Rain |\n|---|---|\n| Mon | 3 |\n| Tue |");
    QAccessibleInterface& element = *reply.child(0);
    EXPECT_EQ(element.role(), QAccessible::Table);
    QAccessibleTableInterface* table = element.tableInterface();
    ASSERT_TRUE(table);
    EXPECT_EQ(table->rowCount(), 3);
    EXPECT_EQ(table->columnCount(), 2);
    EXPECT_THAT(outline(element),
                ElementsAre("ColumnHeader [Day] Day", "ColumnHeader [Rain] Rain", "Cell [Mon] Mon",
                            "Cell [3] 3", "Cell [Tue] Tue", "Cell []"));
    QAccessibleInterface& cell = *table->cellAt(1, 1);
    QAccessibleTableCellInterface* place = cell.tableCellInterface();
    ASSERT_TRUE(place);
    EXPECT_EQ(place->rowIndex(), 1);
    EXPECT_EQ(place->columnIndex(), 1);
    EXPECT_EQ(place->table(), &element);
    ASSERT_EQ(place->columnHeaderCells().size(), 1);
    EXPECT_EQ(place->columnHeaderCells()[0]->text(QAccessible::Name), "Rain");
    EXPECT_EQ(table->columnDescription(1), "Rain");
    EXPECT_GT(cell.rect().left(), table->cellAt(1, 0)->rect().right() - 1);
    // Whoever asks beyond the table is not given nothing, which callers do not expect.
    EXPECT_EQ(table->cellAt(9, -4), table->cellAt(2, 0));
    EXPECT_TRUE(table->cellAt(2, 1)->tableCellInterface());
}

TEST_F(ReplyElementsTest, ALinkIsFollowedByItsPress) {
    QAccessibleInterface& reply = shown("See [the *whole* page](https://a.example/x) for more.");
    QSignalSpy followed(&view(), &ReplyView::linkActivated);
    QAccessibleInterface& link = *reply.child(0)->child(0);
    EXPECT_EQ(link.role(), QAccessible::Link);
    EXPECT_EQ(link.text(QAccessible::Name), "the whole page");
    EXPECT_EQ(reply.child(0)->childCount(), 1);
    EXPECT_TRUE(reply.child(0)->rect().contains(link.rect().center()));
    QAccessibleActionInterface* action = link.actionInterface();
    ASSERT_TRUE(action);
    EXPECT_EQ(action->actionNames(), QStringList(QAccessibleActionInterface::pressAction()));
    action->doAction(QAccessibleActionInterface::pressAction());
    ASSERT_EQ(followed.count(), 1);
    EXPECT_EQ(followed[0][0].toString(), "https://a.example/x");
}

TEST_F(ReplyElementsTest, LinesAreThoseThatAreSeen) {
    const QString paragraph = QString("words of a paragraph that is long ").repeated(6).trimmed();
    QAccessibleInterface& reply = shown("Short.\n\n" + paragraph);
    QAccessibleTextInterface& text = *reply.child(1)->textInterface();
    QStringList lines;
    int start = 0;
    int end = 0;
    for (int offset = 0; offset < text.characterCount(); offset = end) {
        lines += text.textAtOffset(offset, QAccessible::LineBoundary, &start, &end);
        ASSERT_GT(end, offset);
        EXPECT_EQ(start, offset);
        EXPECT_EQ(text.characterRect(start).top(), text.characterRect(end - 2).top());
    }
    EXPECT_GT(lines.size(), 2);
    EXPECT_EQ(lines.join(""), paragraph);
    EXPECT_EQ(text.textAfterOffset(3, QAccessible::LineBoundary, &start, &end), lines[1]);
    EXPECT_EQ(text.textBeforeOffset(start, QAccessible::LineBoundary, &start, &end), lines[0]);
    EXPECT_EQ(text.textBeforeOffset(0, QAccessible::LineBoundary, &start, &end), "");
    EXPECT_EQ(text.textAfterOffset(-1, QAccessible::LineBoundary, &start, &end), "");
    EXPECT_EQ(text.textAtOffset(-1, QAccessible::LineBoundary, &start, &end), lines.back());
    EXPECT_EQ(text.textAtOffset(2, QAccessible::WordBoundary, &start, &end), "words");

    QAccessibleTextInterface& whole = *reply.textInterface();
    EXPECT_EQ(whole.textAtOffset(2, QAccessible::LineBoundary, &start, &end), "Short.\n");
    EXPECT_EQ(whole.textAtOffset(7, QAccessible::LineBoundary, &start, &end), lines[0]);
}

TEST_F(ReplyElementsTest, TheKeyboardIsInTheTextThatTheCaretIsIn) {
    QAccessibleInterface& reply = shown("# Leaves\n\nThey are green.\n\n- one\n- two");
    tabToReply();
    EXPECT_TRUE(reply.state().focused);
    EXPECT_EQ(reply.focusChild(), &reply);
    QAccessibleInterface* heading = reply.child(0);
    QAccessibleInterface* paragraph = reply.child(1);
    key(Qt::Key_Down);
    EXPECT_FALSE(reply.state().focused);
    EXPECT_TRUE(heading->state().focused);
    EXPECT_EQ(reply.focusChild(), heading);
    EXPECT_EQ(heading->textInterface()->cursorPosition(), 0) << "the first line first";
    key(Qt::Key_Right);
    EXPECT_EQ(heading->textInterface()->cursorPosition(), 1);
    key(Qt::Key_Down);
    EXPECT_FALSE(heading->state().focused);
    EXPECT_TRUE(paragraph->state().focused);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(paragraph->textInterface()->cursorPosition(), 4);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(paragraph->textInterface()->cursorPosition(), 8) << "the next word, not the space";
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(paragraph->textInterface()->cursorPosition(), 5);
    key(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    int start = 0;
    int end = 0;
    paragraph->textInterface()->selection(0, &start, &end);
    EXPECT_EQ(paragraph->textInterface()->text(start, end), "are");
    EXPECT_EQ(heading->textInterface()->selectionCount(), 0);
    key(Qt::Key_Down);
    EXPECT_TRUE(reply.child(2)->child(0)->state().focused);
}

// As a menu over it does.
TEST_F(ReplyElementsTest, AWindowThatComesBackFindsTheCaretWhereItWas) {
    QAccessibleInterface& reply = shown("# Leaves\n\nThey are green.");
    tabToReply();
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    QFocusEvent goes(QEvent::FocusOut, Qt::PopupFocusReason);
    QCoreApplication::sendEvent(&view(), &goes);
    QFocusEvent comes(QEvent::FocusIn, Qt::PopupFocusReason);
    QCoreApplication::sendEvent(&view(), &comes);
    EXPECT_TRUE(reply.child(1)->state().focused);
    QFocusEvent byTab(QEvent::FocusIn, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&view(), &byTab);
    EXPECT_TRUE(reply.state().focused) << "who comes by Tab meets the reply first";
}

TEST_F(ReplyElementsTest, AnElementGrowsWithItsBlock) {
    QAccessibleInterface& reply = shown("One.\n\nTwo [a](https://a.example/x) wo\n\n- x");
    QAccessibleInterface* second = reply.child(1);
    QAccessibleInterface* link = second->child(0);
    stage.grow(m_id, "# Zero\n\nTwo [a](https://a.example/x) words\n\n- x\n- y");
    stage.settle(50);
    EXPECT_EQ(reply.child(1), second);
    EXPECT_EQ(second->child(0), link);
    EXPECT_THAT(outline(reply),
                ElementsAre("Heading [Zero] Zero", "Paragraph [] Two a words", " Link [a]",
                            "List []", " ListItem [x] x", " ListItem [y] y"));
    stage.grow(m_id, "# Zero\n\nTwo words of a line that goes on.\n\n- x\n- y");
    stage.settle(50);
    EXPECT_EQ(second->childCount(), 0);
}

TEST_F(ReplyElementsTest, WhoeverReadsAGrowingReplyKeepsTheirPlace) {
    QAccessibleInterface& reply = shown("# Leaves\n\nThey are gr");
    tabToReply();
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    QAccessibleInterface* paragraph = reply.child(1);
    ASSERT_TRUE(paragraph->state().focused);
    stage.grow(m_id, "**Leaves**\n\nThey are green.\n\nMostly.");
    stage.settle(50);
    EXPECT_EQ(reply.focusChild(), paragraph);
    EXPECT_EQ(paragraph->textInterface()->cursorPosition(), 1);
}

TEST_F(ReplyElementsTest, TheCaretMovesWithItsBlock) {
    QAccessibleInterface& reply = shown("One.\n\nTwo.");
    tabToReply();
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    QAccessibleInterface* second = reply.child(1);
    stage.grow(m_id, "One.\n\n---\n\n- a list\n\nTwo.");
    stage.settle(50);
    EXPECT_EQ(reply.child(3), second);
    EXPECT_EQ(reply.focusChild(), second);
    EXPECT_EQ(second->textInterface()->cursorPosition(), 1);
}

TEST_F(ReplyElementsTest, ACellThatARowLackedIsAnotherOnceTheRowHasIt) {
    QAccessibleInterface& reply = shown("| Day | Rain |\n|---|---|\n| Mon |");
    QAccessibleInterface* day = reply.child(0)->child(2);
    ASSERT_EQ(reply.child(0)->child(3)->text(QAccessible::Name), "");
    stage.grow(m_id, "| Day | Rain |\n|---|---|\n| Mon | 3 |\n| Tue |");
    stage.settle(50);
    EXPECT_EQ(reply.child(0)->child(2), day);
    EXPECT_THAT(outline(*reply.child(0)),
                ElementsAre("ColumnHeader [Day] Day", "ColumnHeader [Rain] Rain", "Cell [Mon] Mon",
                            "Cell [3] 3", "Cell [Tue] Tue", "Cell []"));
}

TEST_F(ReplyElementsTest, WhatChangesAsAReplyGrowsIsMadeAnew) {
    QAccessibleInterface& reply = shown("One.\n\nTwo.");
    QAccessibleInterface* first = reply.child(0);
    const QAccessible::Id second = QAccessible::uniqueId(reply.child(1));
    stage.grow(m_id, "One.\n\n- two");
    stage.settle(50);
    EXPECT_EQ(reply.child(0), first);
    EXPECT_FALSE(QAccessible::accessibleInterface(second));
    EXPECT_THAT(outline(reply), ElementsAre("Paragraph [] One.", "List []", " ListItem [two] two"));
    stage.grow(m_id, "");
    stage.settle(50);
    EXPECT_EQ(reply.childCount(), 0);
}

TEST_F(ReplyElementsTest, WithoutAScreenReaderUpAndDownScroll) {
    shown("One.\n\nTwo.");
    tabToReply();
    QAccessible::setActive(false);
    key(Qt::Key_Down);
    EXPECT_FALSE(view().selection().isCaretShown());
    key(Qt::Key_Right);
    EXPECT_TRUE(view().selection().isCaretShown());
}

} // namespace
} // namespace vorq
