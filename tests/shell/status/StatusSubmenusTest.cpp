// The kept conversations and the models in the menu of the status item, pressed with the mouse.

#include "doubles/panel/ConversationFixture.h"
#include "doubles/shell/MenuPress.h"
#include "shell/status/StatusMenu.h"

#include <QGuiApplication>
#include <QLocale>
#include <QScreen>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::StartsWith;

const Date firstDay = *dateFromIso("2026-03-01T10:20:30Z");

class StatusSubmenusTest : public ConversationFixture {
  protected:
    StatusSubmenusTest() { m_menu.bindAppState(state()); }

    [[nodiscard]] QMenu& submenu(const QString& title) const {
        const QList<QAction*> actions = m_menu.actions();
        return *(*std::ranges::find(actions, title, &QAction::text))->menu();
    }
    // Opens the menu and then the one within it, as the user does.
    QMenu& open(const QString& title, const QPoint& place = {}) {
        m_menu.popup(place);
        QMenu& inner = submenu(title);
        pressEntry(m_menu, inner.menuAction());
        EXPECT_TRUE(QTest::qWaitFor([&] { return inner.isVisible(); }));
        return inner;
    }
    void press(const QString& text) {
        EXPECT_TRUE(pressEntry(m_menu, text)) << text.toStdString();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !m_menu.isVisible(); }));
    }
    static QStringList texts(const QMenu& menu) {
        QStringList texts;
        for (const QAction* entry : menu.actions())
            texts += entry->text();
        return texts;
    }
    void keep(const QString& title, Date at) {
        const SavedChatMessage question{QUuid::createUuid(), "user", "about " + title};
        state().library().keepChat({QUuid::createUuid(), title, at, {question}});
    }
    static QString when(Date date) {
        return QLocale().toString(dateTimeOf(date).toLocalTime(), QLocale::ShortFormat);
    }
    [[nodiscard]] QStringList checkedModels() const {
        QStringList texts;
        for (const QAction* entry : submenu("Model").actions())
            if (entry->isChecked()) texts += entry->text().section(u'\t', 0, 0);
        return texts;
    }

    void answer(const QByteArray& list) {
        m_clock.settle();
        EXPECT_EQ(m_transport.last().path(), u"/ai/models");
        m_transport.last().respond(200, list);
        m_clock.settle();
    }

    StatusMenu m_menu;
};

TEST_F(StatusSubmenusTest, WithoutAKeptChatTheHistorySaysSo) {
    const QMenu& history = open("History");
    EXPECT_THAT(texts(history), ElementsAre("No saved chats"));
    EXPECT_FALSE(history.actions().front()->isEnabled());
}

TEST_F(StatusSubmenusTest, TheHistoryHasTheNewestFirstWithItsDate) {
    open("History");
    m_menu.close();
    keep("Pens & ink", firstDay);
    keep("Two\tlines\nin one", firstDay + std::chrono::hours(24));
    const QMenu& history = open("History");
    EXPECT_THAT(texts(history),
                ElementsAre("Two lines in one\t" + when(firstDay + std::chrono::hours(24)),
                            "Pens && ink\t" + when(firstDay)));
    m_menu.close();
    state().library().clearChats();
    EXPECT_THAT(texts(open("History")), ElementsAre("No saved chats"));
}

TEST_F(StatusSubmenusTest, AVeryLongTitleDoesNotMakeAWideMenu) {
    keep(QString(5000, u'W'), firstDay);
    const QMenu& history = open("History");
    EXPECT_THAT(texts(history).front().toStdString(),
                StartsWith(QString(55, u'W').toStdString() + "…\t"));
    EXPECT_LT(history.width(), 480);
}

TEST_F(StatusSubmenusTest, AChosenChatComesBackInThePanel) {
    keep("Old", firstDay);
    keep("New", firstDay);
    const QSignalSpy shown(&panel(), &PanelConversation::vorqShowPanel);
    open("History");
    press("Old\t" + when(firstDay));
    EXPECT_THAT(ConversationFixture::texts(), ElementsAre("about Old"));
    EXPECT_EQ(shown.count(), 1);
}

TEST_F(StatusSubmenusTest, EntriesStandInTwoLines) {
    keep("Pens", firstDay);
    QMenu& history = open("History");
    EXPECT_GE(history.actionGeometry(history.actions().front()).height(), 40);
    EXPECT_GE(history.width(), 280);
    EXPECT_LT(history.width(), 300) << "the date has no column of its own";
}

TEST_F(StatusSubmenusTest, TheModelsAreThoseOfTheCatalogueWithWhatTheyAreGoodFor) {
    EXPECT_THAT(texts(open("Model")),
                ElementsAre("Auto\tBest model for each request",
                            "o3-mini\tEveryday work and reasoning",
                            "Sonar Reasoning Pro\tCurrent research with sources",
                            "Claude Sonnet\tNatural writing and editing",
                            "Gemini Flash\tLong readings and fast research",
                            "DeepSeek\tEveryday questions and chat"));
    EXPECT_THAT(checkedModels(), ElementsAre("Auto"));
}

TEST_F(StatusSubmenusTest, AChosenModelIsPreferredAndChecked) {
    open("Model");
    press("Gemini Flash\tLong readings and fast research");
    EXPECT_EQ(state().model().preferredAIModelID(), u"google/gemini-flash-latest");
    EXPECT_THAT(checkedModels(), ElementsAre("Gemini Flash"));
    m_clock.settle();
    EXPECT_EQ(m_transport.last().request().body,
              R"({"preferredModel":"google/gemini-flash-latest"})");
    open("Model");
    press("Auto\tBest model for each request");
    EXPECT_THAT(checkedModels(), ElementsAre("Auto"));
}

TEST_F(StatusSubmenusTest, AModelIsChosenWithoutAnAccount) {
    state().account().signOut();
    m_clock.settle();
    const std::size_t sent = m_transport.count();
    open("Model");
    press("DeepSeek\tEveryday questions and chat");
    m_clock.settle();
    EXPECT_EQ(m_defaults.string("vorq.preferredAIModel"), "deepseek/deepseek-chat");
    EXPECT_EQ(m_transport.count(), sent);
}

TEST_F(StatusSubmenusTest, WhatTheBackendOffersStandsBelowThem) {
    const QStringList before = texts(open("Model"));
    answer(R"({"models":[{"id":"llama3.1"},{"id":"R&D"},{"id":"deepseek/deepseek-chat"}]})");
    EXPECT_THAT(texts(submenu("Model")),
                ElementsAreArray(before + QStringList{"", "llama3.1\t", "R&&D\t"}));
    press("R&&D\t");
    EXPECT_EQ(state().model().preferredAIModelID(), u"R&D");
    open("Model");
    EXPECT_THAT(checkedModels(), ElementsAre("R&&D"));
    answer(R"({"models":[{"id":"llama3.1"}]})");
    EXPECT_THAT(checkedModels(), ElementsAre("R&&D")) << "the chosen one stays";
    press("llama3.1\t");
    EXPECT_THAT(checkedModels(), ElementsAre("llama3.1"));
    EXPECT_THAT(texts(submenu("Model")), ElementsAreArray(before + QStringList{"", "llama3.1\t"}));
}

TEST_F(StatusSubmenusTest, ShortNamesOfModelsLeaveTheWidthAsItIs) {
    const QMenu& models = open("Model");
    const int before = models.width();
    answer(R"({"models":[{"id":"llama3.1"}]})");
    EXPECT_EQ(models.width(), before);
    EXPECT_FALSE(models.actionGeometry(models.actions().at(6)).isEmpty()) << "the line above them";
}

TEST_F(StatusSubmenusTest, OneThatGrowsStaysBesideTheMenuAndOnTheScreen) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QMenu& models = open("Model", screen.bottomRight());
    ASSERT_LT(models.geometry().left(), m_menu.geometry().left()) << "there is no room elsewhere";
    QByteArray list;
    for (const char end : {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'})
        list += R"(,{"id":"a-model-with-a-name-that-is-as-wide-as-any-name-of-one-may-be-)" +
                QByteArray(1, end) + R"("})";
    answer(R"({"models":[)" + list.sliced(1) + "]}");
    EXPECT_FALSE(models.geometry().intersects(m_menu.geometry()));
    EXPECT_TRUE(screen.contains(models.geometry()));
}

TEST_F(StatusSubmenusTest, TheCheckFollowsTheModelWhileTheMenuIsOpen) {
    open("Model");
    state().model().selectPreferredAIModel("openai/o3-mini");
    EXPECT_THAT(checkedModels(), ElementsAre("o3-mini"));
}

} // namespace
} // namespace vorq
