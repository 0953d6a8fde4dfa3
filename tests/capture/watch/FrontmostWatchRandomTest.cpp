// The watch under whatever a user may do, in any order.

#include "WatchFixture.h"

#include <random>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString watchedSecret = u"geheim"_s;

class FrontmostWatchRandomTest : public WatchTest {
  protected:
    void act(std::uint32_t choice) {
        switch (choice % 10) {
        case 0:
            return bring(source);
        case 1:
            return bring(browser);
        case 2:
            return bring(self);
        case 3:
            workspace.bringNoneToFront();
            return poll();
        case 4:
            select(u"text %1"_s.arg(choice / 10 % 3));
            return poll();
        case 5:
            workspace.entitle(choice / 10 % 2 == 0 ? source : browser,
                              u"title %1"_s.arg(choice / 20 % 3));
            return poll();
        case 6:
            m_hides = !m_hides;
            focus().hidesText = m_hides;
            select(m_hides ? watchedSecret : u"text"_s);
            return poll();
        case 7:
            m_excludes = !m_excludes;
            exclude(m_excludes ? QStringList{"firefox-esr.desktop"} : QStringList{});
            return poll();
        case 8:
            return deliver(static_cast<std::uint8_t>(choice / 10));
        default:
            clock.advance(FrontmostWatchService::leastPollGap);
            settle();
            watch->isWatching() ? watch->stop() : watch->start();
            return settle();
        }
    }

    void deliver(std::uint8_t shade) {
        const bool mayKeep = stream.shown().has_value();
        const auto before = watch->latestCGImage();
        stream.deliver(shade);
        const auto after = watch->latestCGImage();
        if (mayKeep)
            EXPECT_EQ(after->bytes[0], shade);
        else
            EXPECT_EQ(after.has_value(), before.has_value());
        if (after && !mayKeep) EXPECT_EQ(after->bytes.data(), before->bytes.data());
    }

    void expectOrder() {
        const auto front = workspace.frontmostProcess();
        const bool mayBeSeen = watch->isWatching() && front && *front != self && !m_hides &&
                               !(m_excludes && front == browser);
        EXPECT_EQ(watch->isPausedForVorq(), watch->isWatching() && front == self);
        EXPECT_EQ(stream.shown().has_value(), mayBeSeen);
        if (stream.shown()) EXPECT_EQ(stream.shown()->process, front);
        if (watch->latestCGImage() && !watch->isPausedForVorq())
            EXPECT_EQ(watch->latestFramePID(), front);
        if (watch->isWatching()) {
            EXPECT_NE(watch->statusMessage(), "");
        } else {
            EXPECT_EQ(watch->statusMessage(), "");
            EXPECT_FALSE(watch->latestCGImage());
            EXPECT_FALSE(watch->latest());
        }
    }

    bool m_hides = false;
    bool m_excludes = false;
};

TEST_F(FrontmostWatchRandomTest, NothingIsSeenThatMustNotBeAndEachSampleIsAChange) {
    std::mt19937 random(20260301); // NOLINT: the same at each run
    std::optional<WatchSample> last;
    watch->setOnSample([&](const WatchSample& sample) {
        EXPECT_NE(sample.selection, watchedSecret);
        EXPECT_NE(sample.pid, self);
        EXPECT_FALSE(m_excludes && sample.pid == browser);
        EXPECT_TRUE(watch->isWatching());
        EXPECT_EQ(watch->latest(), sample);
        last = sample;
        samples.push_back(sample);
    });
    for (int step = 0; step < 600 && !HasFailure(); ++step) {
        const std::size_t before = samples.size();
        const std::optional<WatchSample> kept = watch->latest();
        act(static_cast<std::uint32_t>(random()));
        expectOrder();
        // One turn gives one sample at most, and none that repeats what is still known.
        EXPECT_LE(samples.size(), before + 2);
        if (samples.size() == before + 1 && kept && kept->pid == last->pid)
            EXPECT_TRUE(kept->selection != last->selection ||
                        kept->windowTitle != last->windowTitle);
    }
    EXPECT_GT(samples.size(), 50U);
}

} // namespace
} // namespace vorq
