#include "doubles/ui/PartTest.h"

#include <QAccessible>
#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

// What readers are told of texts that change, while there is one of it.
class TextsTold {
  public:
    TextsTold() : m_former(QAccessible::installUpdateHandler(take)) { s_texts.clear(); }
    ~TextsTold() { QAccessible::installUpdateHandler(m_former); }
    TextsTold(const TextsTold&) = delete;
    TextsTold& operator=(const TextsTold&) = delete;

    [[nodiscard]] const QStringList& texts() const { return s_texts; }

  private:
    static void take(QAccessibleEvent* event) {
        if (event->type() == QAccessible::TextInserted)
            s_texts += static_cast<QAccessibleTextInsertEvent*>(event)->textInserted();
        else if (event->type() == QAccessible::TextUpdated)
            s_texts += static_cast<QAccessibleTextUpdateEvent*>(event)->textInserted();
        else if (event->type() == QAccessible::ValueChanged)
            s_texts += static_cast<QAccessibleValueChangeEvent*>(event)->value().toString();
    }

    static inline QStringList s_texts;
    QAccessible::UpdateHandler m_former;
};

class FormFieldTest : public PartTest {
  protected:
    void showField(const QString& more = {}) {
        show("FormField { objectName: 'form'; width: 300; label: 'Password'\n"
             "onAccepted: ++root.presses\n" +
             more + "}");
    }
    [[nodiscard]] QQuickItem& input() {
        return *part("form").property("input").value<QQuickItem*>();
    }
};

TEST_F(FormFieldTest, TakesWhatIsTypedAndReturn) {
    showField();
    click(input());
    type("abc");
    EXPECT_EQ(part("form").property("text"), "abc");
    EXPECT_TRUE(hasRing(input())) << "a field shows where typing goes";
    key(Qt::Key_Return);
    EXPECT_EQ(presses(), 1);
}

TEST_F(FormFieldTest, APasswordIsSeenOnlyWhenItIsAskedFor) {
    showField("isPassword: true");
    key(Qt::Key_Tab);
    type("abc");
    const auto shown = [this] { return input().property("displayText").toString(); };
    EXPECT_FALSE(shown().contains("a"));
    EXPECT_TRUE(heard(input()).state().passwordEdit);
    EXPECT_EQ(heard(input()).text(QAccessible::Name), "Password");
    key(Qt::Key_Tab);
    key(Qt::Key_Space);
    EXPECT_EQ(shown(), "abc");
    EXPECT_EQ(heard(*window.activeFocusItem()).text(QAccessible::Name), "Hide the password");
    click(*window.activeFocusItem());
    EXPECT_FALSE(shown().contains("a"));
}

TEST_F(FormFieldTest, AScreenReaderMeetsAPasswordByItsLengthAlone) {
    showField("isPassword: true");
    (void)heard(input());
    key(Qt::Key_Tab);
    const TextsTold told;
    type("swordfish");
    QAccessibleTextInterface* text = heard(input()).textInterface();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->characterCount(), 9);
    EXPECT_EQ(text->text(0, 9), u"•••••••••");
    EXPECT_EQ(text->text(2, 4), u"••");
    EXPECT_EQ(text->cursorPosition(), 9);
    EXPECT_EQ(heard(input()).text(QAccessible::Value), u"•••••••••");
    for (const QString& part : told.texts())
        EXPECT_EQ(part.count(QChar(u'•')), part.size()) << part.toStdString();
}

TEST_F(FormFieldTest, AScreenReaderHearsTheLabelAndWhatIsWrong) {
    showField("hint: 'At least 8 characters.'");
    EXPECT_EQ(heard(input()).role(), QAccessible::EditableText);
    EXPECT_EQ(heard(input()).text(QAccessible::Name), "Password");
    EXPECT_EQ(heard(input()).text(QAccessible::Description), "At least 8 characters.");
    part("form").setProperty("error", "Too short");
    EXPECT_EQ(heard(input()).text(QAccessible::Description), "Too short");
    EXPECT_TRUE(saying("Too short"));
    EXPECT_FALSE(saying("At least 8 characters."));
}

TEST_F(FormFieldTest, WhatIsSpokenTakesNoRoom) {
    showField("error: 'Too short'");
    const double height = part("form").height();
    part("form").setProperty("error", "Too long");
    stage.settle(50);
    EXPECT_EQ(part("form").height(), height);
}

TEST_F(FormFieldTest, OneThatIsOffTakesNothing) {
    showField("enabled: false");
    click(input());
    type("abc");
    EXPECT_EQ(part("form").property("text"), "");
    EXPECT_TRUE(heard(input()).state().readOnly);
}

class SearchFieldTest : public PartTest {
  protected:
    SearchFieldTest() {
        show("focus: true; Keys.onEscapePressed: ++presses\n"
             "SearchField { objectName: 'search'; placeholderText: 'Search chats' }");
        click(part("search"));
        type("leaf");
    }
    [[nodiscard]] QString text() { return part("search").property("text").toString(); }
};

TEST_F(SearchFieldTest, EscapeEmptiesItAndThenGoesOn) {
    EXPECT_EQ(text(), "leaf");
    key(Qt::Key_Escape);
    EXPECT_EQ(text(), "");
    EXPECT_EQ(presses(), 0);
    key(Qt::Key_Escape);
    EXPECT_EQ(presses(), 1);
}

TEST_F(SearchFieldTest, TheCrossEmptiesItAndTypingGoesOn) {
    click(*saying("Clear the search"));
    EXPECT_EQ(text(), "");
    EXPECT_FALSE(saying("Clear the search"));
    type("x");
    EXPECT_EQ(text(), "x");
}

TEST_F(SearchFieldTest, IsHeardAsASearch) {
    QAccessibleInterface& search = heard(part("search"));
    EXPECT_EQ(search.role(), QAccessible::EditableText);
    EXPECT_EQ(search.text(QAccessible::Name), "Search chats");
    EXPECT_TRUE(search.state().searchEdit);
}

} // namespace
} // namespace vorq
