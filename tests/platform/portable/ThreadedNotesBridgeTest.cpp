#include "platform/portable/ThreadedNotesBridge.h"
#include "doubles/async/TurnUntil.h"
#include "platform/portable/BlockingNotes.h"

#include <gmock/gmock.h>

#include <QTimer>

#include <memory>
#include <semaphore>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

// Answers one question each time that it is let.
class GatedNotes final : public BlockingNotes {
  public:
    std::counting_semaphore<> gate{0};
    QStringList titles;

    void answerAll() { gate.release(1000); }

    std::vector<AppleNoteSummary> listNotes(int) override {
        gate.acquire();
        std::vector<AppleNoteSummary> list;
        for (const QString& title : titles)
            list.push_back({title, title});
        return list;
    }
    std::optional<QString> noteBody(const QString& id) override {
        gate.acquire();
        return id;
    }
    Created createNote(const QString& title, const QString&) override {
        gate.acquire();
        titles += title;
        return title;
    }
    Appended appendToNote(const QString& id, const QString&) override {
        gate.acquire();
        if (!titles.contains(id)) return std::unexpected(notesbridge::appendFailed);
        return {};
    }
    Reached reach() override {
        gate.acquire();
        return "gated";
    }
};

template<typename T>
std::shared_ptr<std::optional<T>> answerOf(QCoro::Task<T> task) {
    auto answer = std::make_shared<std::optional<T>>();
    const auto follow = [](QCoro::Task<T> asked,
                           std::shared_ptr<std::optional<T>> result) -> QCoro::Task<> {
        result->emplace(co_await asked);
    };
    (void)follow(std::move(task), answer);
    return answer;
}

template<typename T>
bool comes(const std::shared_ptr<std::optional<T>>& answer) {
    return turnUntil([&] { return answer->has_value(); });
}

class ThreadedNotesBridgeTest : public testing::Test {
  protected:
    std::shared_ptr<GatedNotes> m_application = std::make_shared<GatedNotes>();
    std::unique_ptr<ThreadedNotesBridge> m_bridge =
        std::make_unique<ThreadedNotesBridge>(m_application);
};

TEST_F(ThreadedNotesBridgeTest, TheEventLoopTurnsWhileTheApplicationHangs) {
    const auto list = answerOf(m_bridge->listNotes(5, {}));
    int turns = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&turns] { ++turns; });
    ticker.start(1ms);
    EXPECT_TRUE(turnUntil([&turns] { return turns >= 20; }));
    EXPECT_FALSE(list->has_value());
    m_application->answerAll();
    EXPECT_TRUE(comes(list));
}

TEST_F(ThreadedNotesBridgeTest, AsksInOrderAndGivesEachItsAnswer) {
    const auto created = answerOf(m_bridge->createNote("Plan", "one", {}));
    const auto appended = answerOf(m_bridge->appendToNote("Plan", "two", {}));
    const auto refused = answerOf(m_bridge->appendToNote("Other", "two", {}));
    const auto body = answerOf(m_bridge->noteBody("Plan", {}));
    const auto list = answerOf(m_bridge->listNotes(5, {}));
    m_application->answerAll();
    ASSERT_TRUE(comes(list));
    EXPECT_EQ(created->value(), u"Plan");
    EXPECT_TRUE(appended->value().has_value());
    EXPECT_EQ(refused->value().error(), notesbridge::appendFailed);
    EXPECT_EQ(body->value(), u"Plan");
    EXPECT_THAT(list->value(), ElementsAre(AppleNoteSummary{"Plan", "Plan"}));
}

TEST_F(ThreadedNotesBridgeTest, WhatIsStoppedBeforeItsTurnDoesNothing) {
    std::stop_source stop;
    const auto first = answerOf(m_bridge->createNote("First", "", {}));
    const auto second = answerOf(m_bridge->createNote("Second", "", stop.get_token()));
    const auto list = answerOf(m_bridge->listNotes(5, stop.get_token()));
    const auto body = answerOf(m_bridge->noteBody("First", stop.get_token()));
    const auto appended = answerOf(m_bridge->appendToNote("First", "x", stop.get_token()));
    stop.request_stop();
    m_application->gate.release(1); // for the first alone
    ASSERT_TRUE(comes(appended));
    EXPECT_EQ(first->value(), u"First");
    EXPECT_EQ(second->value().error(), QString());
    EXPECT_THAT(list->value(), IsEmpty());
    EXPECT_EQ(body->value(), std::nullopt);
    EXPECT_EQ(appended->value().error(), QString());
    EXPECT_THAT(m_application->titles, ElementsAre("First"));
}

// Some of it may be the user's text on its way.
TEST_F(ThreadedNotesBridgeTest, FinishesWhatItWasAskedBeforeItGoes) {
    const auto first = answerOf(m_bridge->createNote("First", "", {}));
    const auto second = answerOf(m_bridge->createNote("Second", "", {}));
    m_application->answerAll();
    m_bridge.reset();
    EXPECT_THAT(m_application->titles, ElementsAre("First", "Second"));
    EXPECT_TRUE(comes(second));
}

} // namespace
} // namespace vorq
