// The turns that wait, apart from what they do.

#include "panel/PanelTurnQueue.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <random>
#include <utility>
#include <vector>

namespace vorq {
namespace {

using testing::ElementsAre;

// Turns are known by the number that is their prompt, and end by hand.
class PanelTurnQueueTest : public testing::Test {
  protected:
    void submit(int number) { m_queue.submit(PromptTurn{{}, QString::number(number), {}}); }
    void end() {
        m_running.reset();
        m_queue.drainIfIdle();
    }

    std::vector<int> m_started;
    std::optional<int> m_running;
    /// While a turn is being started.
    std::function<void(int number)> m_onStart;
    /// Whether a turn comes to nothing.
    std::function<bool(int number)> m_isVain = [](int) { return false; };
    PanelTurnQueue m_queue{[this] { return m_running.has_value(); },
                           [this](const PanelTurn& turn) { start(turn); }};

  private:
    void start(const PanelTurn& turn) {
        const int number = std::get<PromptTurn>(turn).prompt.toInt();
        EXPECT_EQ(m_running, std::nullopt) << number << " was started beside it";
        EXPECT_FALSE(std::exchange(m_isStarting, true)) << number << " was started within another";
        m_started.push_back(number);
        if (m_onStart) m_onStart(number);
        if (!m_isVain(number)) m_running = number;
        m_isStarting = false;
    }

    bool m_isStarting = false;
};

TEST_F(PanelTurnQueueTest, StartsATurnAtOnceWhileNoneIsUnderWay) {
    submit(1);
    EXPECT_THAT(m_started, ElementsAre(1));
    EXPECT_EQ(m_queue.size(), 0U);
}

TEST_F(PanelTurnQueueTest, LetsTheOthersWaitInOrder) {
    submit(1);
    submit(2);
    submit(3);
    EXPECT_EQ(m_queue.size(), 2U);
    end();
    EXPECT_THAT(m_started, ElementsAre(1, 2));
    end();
    EXPECT_THAT(m_started, ElementsAre(1, 2, 3));
}

TEST_F(PanelTurnQueueTest, DropsWhatWaitsButNotWhatIsUnderWay) {
    submit(1);
    submit(2);
    m_queue.clear();
    end();
    EXPECT_THAT(m_started, ElementsAre(1));
}

TEST_F(PanelTurnQueueTest, ATurnThatComesToNothingLeavesNobodyWaiting) {
    m_isVain = [](int number) { return number == 2; };
    submit(1);
    submit(2);
    submit(3);
    end();
    EXPECT_THAT(m_started, ElementsAre(1, 2, 3));
    EXPECT_EQ(m_running, 3);
}

TEST_F(PanelTurnQueueTest, WhoeverDrainsWhileATurnIsBeingStartedStartsNoOther) {
    submit(1);
    submit(2);
    submit(3);
    m_onStart = [this](int) { m_queue.drainIfIdle(); };
    end();
    EXPECT_THAT(m_started, ElementsAre(1, 2));
    EXPECT_EQ(m_queue.size(), 1U);
}

TEST_F(PanelTurnQueueTest, KnowsWhichFailedReplyWaitsToBeTriedAgain) {
    const QUuid failed = QUuid::createUuid();
    submit(1);
    m_queue.submit(RetryTurn{failed});
    EXPECT_TRUE(m_queue.hasRetryOf(failed));
    EXPECT_FALSE(m_queue.hasRetryOf(QUuid::createUuid()));
    m_queue.clear();
    EXPECT_FALSE(m_queue.hasRetryOf(failed));
}

// Whatever is submitted, ended, dropped and asked for, in whatever order.
class RandomTurnQueueTest : public PanelTurnQueueTest {
  protected:
    void run(unsigned seed) {
        m_random.seed(seed);
        SCOPED_TRACE("sequence " + std::to_string(seed));
        m_isVain = [this](int) { return below(4) == 0; };
        m_onStart = [this](int) {
            if (below(3) == 0) m_queue.drainIfIdle();
            if (below(5) == 0) submitNext();
            if (below(20) == 0) dropAll();
        };
        for (int step = 0; step < 60; ++step) {
            doAnything();
            EXPECT_TRUE(m_running || m_queue.size() == 0) << "a turn waits for nobody";
            EXPECT_EQ(m_queue.size(), m_due.size() - startedOfDue());
        }
        m_onStart = nullptr;
        while (m_running)
            end();
        // All that were not dropped, each once, in the order in which they came.
        EXPECT_EQ(m_started, m_expected);
        EXPECT_EQ(m_queue.size(), 0U);
        m_started.clear();
        m_expected.clear();
        m_due.clear();
    }

  private:
    [[nodiscard]] unsigned below(unsigned limit) {
        return static_cast<unsigned>(m_random() % limit);
    }
    void submitNext() {
        m_due.push_back(++m_last);
        m_expected.push_back(m_last);
        submit(m_last);
    }
    void dropAll() {
        const std::size_t waiting = m_due.size() - startedOfDue();
        m_expected.resize(m_expected.size() - waiting);
        m_due.resize(m_due.size() - waiting);
        m_queue.clear();
    }
    // Numbers rise, so those up to the one that was started last are no longer due.
    [[nodiscard]] std::size_t startedOfDue() const {
        const int last = m_started.empty() ? 0 : m_started.back();
        return static_cast<std::size_t>(
            std::ranges::count_if(m_due, [last](int number) { return number <= last; }));
    }
    void doAnything() {
        switch (below(5)) {
        case 0:
        case 1:
            submitNext();
            break;
        case 2:
            end();
            break;
        case 3:
            m_queue.drainIfIdle();
            break;
        default:
            if (below(6) == 0) dropAll();
            break;
        }
    }

    std::mt19937 m_random;
    int m_last = 0;
    std::vector<int> m_due;
    std::vector<int> m_expected;
};

TEST_F(RandomTurnQueueTest, NoneIsLostNoneStartsTwiceAndNoneOvertakes) {
    for (unsigned seed = 1; seed <= 2000 && !HasFailure(); ++seed)
        run(seed);
}

} // namespace
} // namespace vorq
