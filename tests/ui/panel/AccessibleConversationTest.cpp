// The conversation as a screen reader finds it.

#include "doubles/ui/PanelStage.h"
#include "ui/reply/ReplyView.h"

#include <QAccessible>
#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AccessibleConversationTest : public testing::Test {
  protected:
    AccessibleConversationTest() { QAccessible::setActive(true); }
    ~AccessibleConversationTest() override { QAccessible::setActive(false); }

    static QList<QAccessibleInterface*> childrenOf(QAccessibleInterface& element) {
        QList<QAccessibleInterface*> children;
        for (int i = 0; i < element.childCount(); ++i) {
            QAccessibleInterface* child = element.child(i);
            EXPECT_EQ(element.indexOfChild(child), i);
            EXPECT_EQ(child->parent(), &element);
            children += child;
        }
        return children;
    }
    static QList<QAccessibleInterface*> allBelow(QAccessibleInterface& element) {
        QList<QAccessibleInterface*> all;
        for (QAccessibleInterface* child : childrenOf(element))
            all += QList{child} + allBelow(*child);
        return all;
    }
    QAccessibleInterface& element(QQuickItem* item) {
        return *QAccessible::queryAccessibleInterface(item);
    }
    void show() {
        stage.show();
        stage.settle(300);
    }

    PanelStage stage;
};

TEST_F(AccessibleConversationTest, EntriesAreInTheOrderOfTheConversation) {
    for (int i = 0; i < 12; ++i) {
        stage.say(QString("question %1").arg(i));
        stage.answer(QString("answer %1").arg(i));
    }
    show();
    // Scrolled, so that items come into being above and below others.
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End, Qt::Key_Home}) {
        QTest::keyClick(stage.window.get(), key, Qt::ControlModifier);
        stage.settle(50);
    }
    std::vector<int> numbers;
    for (QAccessibleInterface* entry : childrenOf(element(&stage.list())))
        if (entry->role() == QAccessible::ListItem)
            numbers.push_back(entry->text(QAccessible::Name).section(' ', -1).toInt());
    EXPECT_GT(numbers.size(), 10U);
    EXPECT_TRUE(std::ranges::is_sorted(numbers)) << testing::PrintToString(numbers);
}

TEST_F(AccessibleConversationTest, EntriesAreNamedInPlainWordsAndHoldNothingUnseen) {
    stage.say("Tell me");
    stage.answer("## Silt and *floods*\n\nA **river** carries silt.");
    show();
    std::vector<std::string> entries;
    std::vector<std::string> unseen;
    for (QAccessibleInterface* element : allBelow(element(&stage.list()))) {
        const std::string name = element->text(QAccessible::Name).toStdString();
        if (element->role() == QAccessible::ListItem) entries.push_back(name);
        const bool isUnseen = element->state().invisible || name.empty();
        if (isUnseen && element->role() == QAccessible::StaticText) unseen.push_back(name);
    }
    EXPECT_THAT(entries,
                ElementsAre("You: Tell me", "Vorq: Silt and floods\nA river carries silt."));
    EXPECT_THAT(unseen, IsEmpty());
}

TEST_F(AccessibleConversationTest, AReplyThatIsWorkedOnSaysSo) {
    stage.say("Tell me");
    stage.work();
    show();
    std::vector<std::string> labels;
    for (QAccessibleInterface* element : allBelow(element(&stage.list())))
        if (element->role() == QAccessible::StaticText)
            labels.push_back(element->text(QAccessible::Name).toStdString());
    EXPECT_THAT(labels, ElementsAre("Working..."));
}

TEST_F(AccessibleConversationTest, OneElementHasTheKeyboard) {
    stage.say("Tell me");
    stage.answer("A river carries silt.\n\nThat is it.");
    show();
    const auto focused = [&] {
        std::vector<std::string> names;
        for (QAccessibleInterface* element : allBelow(element(&stage.root())))
            if (element->state().focused)
                names.push_back(element->text(QAccessible::Name).toStdString());
        if (element(&stage.root()).state().focused) names.emplace_back("the panel");
        return names;
    };
    EXPECT_THAT(focused(), ElementsAre("Ask Vorq for help…"));
    EXPECT_EQ(element(&stage.root()).focusChild()->text(QAccessible::Name), "Ask Vorq for help…");
    QTest::keyClick(stage.window.get(), Qt::Key_Tab);
    EXPECT_THAT(focused(), ElementsAre("Add files or notes"));
    QTest::keyClick(stage.window.get(), Qt::Key_Tab);
    EXPECT_THAT(focused(), ElementsAre("Reply"));
    QTest::keyClick(stage.window.get(), Qt::Key_Down);
    EXPECT_THAT(focused(), ElementsAre("")) << "the paragraph";
    EXPECT_EQ(element(&stage.root()).focusChild()->role(), QAccessible::Paragraph);
}

} // namespace
} // namespace vorq
