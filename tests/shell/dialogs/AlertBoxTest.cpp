#include "shell/dialogs/AlertBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AlertBoxTest : public testing::Test {
  protected:
    void show(const Alert& alert) {
        m_alerts.show(alert, [this](qsizetype button) { m_chosen.push_back(button); });
    }

    [[nodiscard]] QAbstractButton* button(const QString& text) const {
        for (QAbstractButton* each : m_alerts.box()->buttons())
            if (each->text() == text) return each;
        return nullptr;
    }

    // The box goes after it has told what was chosen.
    void settle() const {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    const Alert m_question{"Delete?", "For good & all <b>.", {"Delete", "Cancel"}};
    AlertBox m_alerts;
    std::vector<qsizetype> m_chosen;
};

TEST_F(AlertBoxTest, ShowsTheWordsAsTheyAre) {
    show(m_question);
    ASSERT_NE(m_alerts.box(), nullptr);
    EXPECT_TRUE(m_alerts.box()->isVisible());
    EXPECT_EQ(m_alerts.box()->text(), m_question.message);
    EXPECT_EQ(m_alerts.box()->informativeText(), m_question.informativeText);
    EXPECT_EQ(m_alerts.box()->textFormat(), Qt::PlainText);
    ASSERT_NE(button("Delete"), nullptr);
    ASSERT_NE(button("Cancel"), nullptr);
}

TEST_F(AlertBoxTest, TellsWhichButtonWasTaken) {
    show(m_question);
    button("Delete")->click();
    settle();
    show(m_question);
    button("Cancel")->click();
    settle();
    EXPECT_THAT(m_chosen, ElementsAre(0, 1));
    EXPECT_EQ(m_alerts.box(), nullptr);
}

TEST_F(AlertBoxTest, ReturnEscapeAndClosingDoNothingByAccident) {
    show(m_question);
    QTest::keyClick(m_alerts.box(), Qt::Key_Return);
    settle();
    show(m_question);
    QTest::keyClick(m_alerts.box(), Qt::Key_Escape);
    settle();
    show(m_question);
    m_alerts.box()->close();
    settle();
    EXPECT_THAT(m_chosen, ElementsAre(1, 1, 1));
}

TEST_F(AlertBoxTest, TheSameAlertComesForwardAndIsNoSecondOne) {
    show(m_question);
    const QPointer<QMessageBox> first = m_alerts.box();
    show(m_question);
    EXPECT_EQ(m_alerts.box(), first);
    button("Delete")->click();
    settle();
    EXPECT_THAT(m_chosen, ElementsAre(0));
}

TEST_F(AlertBoxTest, AnotherAlertTakesThePlaceWithoutAnAnswerToTheFirst) {
    show(m_question);
    show({"Not all is gone.", "One file is left.", {"Quit"}});
    EXPECT_THAT(m_chosen, IsEmpty());
    EXPECT_EQ(m_alerts.box()->text(), "Not all is gone.");
    QTest::keyClick(m_alerts.box(), Qt::Key_Escape);
    settle();
    EXPECT_THAT(m_chosen, ElementsAre(0));
}

TEST_F(AlertBoxTest, AnswersMayShowAnotherAlert) {
    m_alerts.show(m_question, [this](qsizetype) { show({"Done.", "", {"Quit"}}); });
    button("Delete")->click();
    settle();
    ASSERT_NE(m_alerts.box(), nullptr);
    EXPECT_EQ(m_alerts.box()->text(), "Done.");
    EXPECT_TRUE(m_alerts.box()->isVisible());
}

} // namespace
} // namespace vorq
