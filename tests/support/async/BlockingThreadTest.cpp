#include "support/async/BlockingThread.h"
#include "doubles/async/TurnUntil.h"

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <semaphore>
#include <stdexcept>
#include <vector>

namespace vorq {
namespace {

using AtEnd = BlockingThread::AtEnd;
using Gate = std::counting_semaphore<>;

// Works handed to a thread: which have run, in which order, and which of them were answered. Only
// the thread writes m_ran, and the test reads it when all is answered.
class Works {
  public:
    using Step = std::function<void(const std::stop_token&)>;

    void add(BlockingThread& thread, std::stop_token stop, Step step) {
        const int number = m_count++;
        auto work = [book = m_book, number, step = std::move(step)](const std::stop_token& token) {
            if (step) step(token);
            book->ran.push_back({number, token.stop_requested()});
            if (number % 5 == 4) throw std::runtime_error("the fifth fails");
            return number;
        };
        (void)follow(thread.run(std::move(work), std::move(stop)), number, m_book);
    }

    [[nodiscard]] bool waitForAll() const {
        return turnUntil([this] { return m_book->answered.size() == std::size_t(m_count); });
    }
    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] std::size_t answeredCount() const { return m_book->answered.size(); }
    [[nodiscard]] std::size_t ranCount() const { return m_book->ran.size(); }
    [[nodiscard]] bool sawStop(int number) const {
        return m_book->ran.at(static_cast<std::size_t>(number)).second;
    }

    void expectOrder() const {
        std::vector<int> expected;
        std::vector<int> ran;
        expected.reserve(m_book->ran.size());
        ran.reserve(m_book->ran.size());
        for (int number = 0; number < m_count; ++number)
            expected.push_back(number);
        for (const auto& [number, isStopped] : m_book->ran)
            ran.push_back(number);
        EXPECT_EQ(ran, expected);
        EXPECT_EQ(m_book->answered, expected);
    }

  private:
    struct Book {
        std::vector<std::pair<int, bool>> ran;
        std::vector<int> answered;
    };

    static QCoro::Task<> follow(QCoro::Task<int> task, int number, std::shared_ptr<Book> book) {
        try {
            const int result = co_await task;
            EXPECT_EQ(result, number);
            EXPECT_NE(number % 5, 4);
        } catch (const std::runtime_error&) {
            EXPECT_EQ(number % 5, 4);
        }
        book->answered.push_back(number);
    }

    std::shared_ptr<Book> m_book = std::make_shared<Book>();
    int m_count = 0;
};

void waitForStop(const std::stop_token& token) {
    Gate isStopped(0);
    const std::stop_callback onStop(token, [&] { isStopped.release(); });
    isStopped.acquire();
}

TEST(BlockingThread, DoesOneAfterTheOtherInTheOrderAsked) {
    BlockingThread thread(AtEnd::Finish);
    Works works;
    Gate mayBegin(0);
    works.add(thread, {}, [&](const std::stop_token&) { mayBegin.acquire(); });
    for (int number = 1; number < 300; ++number)
        works.add(thread, {}, {});
    mayBegin.release();
    ASSERT_TRUE(works.waitForAll());
    works.expectOrder();
}

TEST(BlockingThread, GivesNothingBeforeTheEventLoopTurns) {
    Works works;
    {
        BlockingThread thread(AtEnd::Finish);
        works.add(thread, {}, {});
    }
    EXPECT_EQ(works.ranCount(), 1);
    EXPECT_EQ(works.answeredCount(), 0);
    EXPECT_TRUE(works.waitForAll());
}

TEST(BlockingThread, OneThatFinishesDoesAllThatWasAskedBeforeItGoes) {
    Works works;
    {
        BlockingThread thread(AtEnd::Finish);
        Gate hasBegun(0);
        works.add(thread, {}, [&](const std::stop_token&) { hasBegun.release(); });
        for (int number = 1; number < 20; ++number)
            works.add(thread, {}, {});
        hasBegun.acquire();
    }
    EXPECT_EQ(works.ranCount(), 20);
    EXPECT_FALSE(works.sawStop(19));
    ASSERT_TRUE(works.waitForAll());
    works.expectOrder();
}

TEST(BlockingThread, OneThatStopsTellsWhatIsUnderWayAndWhatWaits) {
    Works works;
    {
        BlockingThread thread(AtEnd::Stop);
        Gate hasBegun(0);
        works.add(thread, {}, [&](const std::stop_token& token) {
            hasBegun.release();
            waitForStop(token);
        });
        works.add(thread, {}, waitForStop);
        works.add(thread, {}, waitForStop);
        hasBegun.acquire();
    }
    EXPECT_EQ(works.ranCount(), 3);
    EXPECT_TRUE(works.sawStop(2));
    ASSERT_TRUE(works.waitForAll());
    works.expectOrder();
}

TEST(BlockingThread, StopsTheOneAskedAndNoOther) {
    BlockingThread thread(AtEnd::Finish);
    Works works;
    std::stop_source stop;
    Gate hasBegun(0);
    works.add(thread, stop.get_token(), [&](const std::stop_token& token) {
        hasBegun.release();
        waitForStop(token);
    });
    works.add(thread, {}, {});
    hasBegun.acquire();
    stop.request_stop();
    ASSERT_TRUE(works.waitForAll());
    EXPECT_TRUE(works.sawStop(0));
    EXPECT_FALSE(works.sawStop(1));
}

// Whatever is asked, stopped, turned and ended in between: all work runs once and in order, each is
// answered once and in order, and nothing hangs.
class RandomBlockingThreads : public testing::TestWithParam<unsigned> {};

TEST_P(RandomBlockingThreads, LoseNothingAndHangNowhere) {
    std::mt19937 random(GetParam());
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    for (int round = 0; round < 40; ++round) {
        Works works;
        const AtEnd atEnd = below(2) == 0 ? AtEnd::Finish : AtEnd::Stop;
        auto thread = std::make_unique<BlockingThread>(atEnd);
        std::vector<std::stop_source> stops;
        for (std::size_t step = below(60); step > 0; --step) {
            const std::size_t action = below(10);
            if (action < 4) {
                works.add(*thread, {}, {});
            } else if (action < 6) {
                // Ends when it is stopped only, which comes to each before the thread goes.
                works.add(*thread, stops.emplace_back().get_token(), waitForStop);
            } else if (action < 8 && !stops.empty()) {
                stops[below(stops.size())].request_stop();
            } else {
                QCoreApplication::processEvents();
            }
        }
        if (atEnd == AtEnd::Finish)
            for (std::stop_source& stop : stops)
                stop.request_stop();
        thread.reset();
        EXPECT_EQ(works.ranCount(), static_cast<std::size_t>(works.count()));
        ASSERT_TRUE(works.waitForAll());
        works.expectOrder();
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomBlockingThreads, testing::Range(1U, 9U));

} // namespace
} // namespace vorq
