// The time of the parser grows with the text and no faster.

#include "ReplyCorpus.h"
#include "rendering/AssistantReplyDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

namespace vorq {
namespace {

using bench::Hostile;

class ReplyGrowth : public testing::TestWithParam<int> {
  protected:
    // Processor time of the best of a few runs.
    static double seconds(const QString& text) {
        double best = 1e9;
        for (int round = 0; round < 5; ++round) {
            const std::clock_t start = std::clock();
            const QList<AssistantReplyDocument::Block> blocks =
                AssistantReplyDocument::blocks(text);
            const QString committed = AssistantReplyDocument::committedSource(text, false);
            const std::clock_t end = std::clock();
            EXPECT_LE(committed.size(), 16 * text.size() + blocks.size());
            best = std::min(best, double(end - start) / CLOCKS_PER_SEC);
        }
        return best;
    }
};

TEST_P(ReplyGrowth, IsLinear) {
    const auto hostile = static_cast<Hostile>(GetParam());
    const QString small = QString::fromStdString(bench::hostileText(hostile, 20'000));
    const QString large = QString::fromStdString(bench::hostileText(hostile, 320'000));
    // Sixteen times the text; quadratic growth would be 256 times the time.
    EXPECT_LT(seconds(large), 64 * seconds(small) + 0.002) << bench::hostileName(hostile);
}

INSTANTIATE_TEST_SUITE_P(HostileTexts, ReplyGrowth,
                         testing::Range(0, static_cast<int>(Hostile::Last) + 1));

} // namespace
} // namespace vorq
