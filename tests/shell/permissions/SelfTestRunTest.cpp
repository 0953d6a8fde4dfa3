#include "shell/permissions/SelfTestRun.h"
#include "doubles/shell/SelfTestFixture.h"

#include <QSignalSpy>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class SelfTestRunTest : public SelfTestFixture {
  protected:
    void turns(int count) {
        for (; count > 0; --count)
            turn(5ms);
    }
    void finish() {
        for (const QDeadlineTimer guard(60'000); m_run.isTesting(); turn(5ms))
            if (guard.hasExpired()) throw std::runtime_error("the self-test does not end");
    }

    SelfTestRun m_run{[this]() -> SelfTest& { return *m_test; }};
};

TEST_F(SelfTestRunTest, SaysNothingBeforeTheFirst) {
    m_run.follow();
    EXPECT_EQ(m_run.total(), 0);
    EXPECT_EQ(m_run.outcome(), QString());
    EXPECT_FALSE(m_run.isTesting());
    m_run.cancel();
    m_run.leave();
}

TEST_F(SelfTestRunTest, TellsHowFarItHasGot) {
    m_run.start();
    EXPECT_TRUE(m_run.isTesting());
    EXPECT_EQ(m_run.finished(), 0);
    EXPECT_EQ(std::size_t(m_run.total()), m_test->count());
    EXPECT_EQ(m_run.outcome(), QString());
    const QSignalSpy changed(&m_run, &SelfTestRun::changed);
    finish();
    EXPECT_EQ(m_run.finished(), m_run.total());
    EXPECT_GE(std::size_t(changed.count()), m_test->count());
    EXPECT_EQ(m_run.outcome(), u"Vorq works on this desktop.");
    EXPECT_FALSE(m_run.hasFailures());
}

TEST_F(SelfTestRunTest, CountsWhatFailed) {
    m_notesApplication.refusal = u"no"_s;
    m_run.start();
    finish();
    EXPECT_EQ(m_run.outcome(), u"One thing does not work.");
    EXPECT_TRUE(m_run.hasFailures());
}

TEST_F(SelfTestRunTest, StartedTwiceItRunsOnce) {
    m_run.start();
    turns(20);
    const int finished = m_run.finished();
    ASSERT_GT(finished, 0);
    m_run.start();
    EXPECT_EQ(m_run.finished(), finished);
    finish();
}

TEST_F(SelfTestRunTest, CancelledItSaysSo) {
    m_run.start();
    turns(3);
    m_run.cancel();
    finish();
    EXPECT_EQ(m_run.outcome(), u"The test was ended early.");
    EXPECT_LT(m_run.finished(), m_run.total());
    m_run.start();
    finish();
    EXPECT_EQ(m_run.outcome(), u"Vorq works on this desktop.");
}

TEST_F(SelfTestRunTest, AWindowThatClosesEndsItsTest) {
    m_run.start();
    turns(3);
    m_run.leave();
    finish();
    EXPECT_LT(m_run.finished(), m_run.total());
}

TEST_F(SelfTestRunTest, ATestOfACommandIsJoinedAndGoesOn) {
    m_test->start();
    turns(20);
    ASSERT_TRUE(m_test->isRunning());
    m_run.follow();
    EXPECT_TRUE(m_run.isTesting());
    EXPECT_EQ(std::size_t(m_run.finished()), m_test->results().size());
    m_run.start();
    m_run.leave();
    finish();
    EXPECT_EQ(m_run.finished(), m_run.total());
}

TEST_F(SelfTestRunTest, ATestThatACommandBeginsLaterIsFollowed) {
    m_run.follow();
    m_test->start();
    EXPECT_TRUE(m_run.isTesting());
    finish();
    EXPECT_EQ(m_run.outcome(), u"Vorq works on this desktop.");
}

} // namespace
} // namespace vorq
