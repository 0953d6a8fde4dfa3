#include "capture/source/SourceProcess.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

TEST(ResolveSourcePID, TakesTheGivenProcess) {
    EXPECT_EQ(resolveSourcePID({.own = 7, .given = 1, .lastForeign = 2, .frontmost = 3}), 1);
}

TEST(ResolveSourcePID, FallsToTheLastForeignProcessWhenVorqIsInFront) {
    EXPECT_EQ(resolveSourcePID({.own = 7, .given = 7, .lastForeign = 2, .frontmost = 7}), 2);
}

TEST(ResolveSourcePID, TakesNoGivenProcessBelowOne) {
    EXPECT_EQ(resolveSourcePID({.own = 7, .given = 0, .lastForeign = 2, .frontmost = 3}), 2);
    EXPECT_EQ(resolveSourcePID({.own = 7, .given = -1, .lastForeign = {}, .frontmost = 3}), 3);
}

TEST(ResolveSourcePID, FallsToTheFrontmostProcessLast) {
    EXPECT_EQ(resolveSourcePID({.own = 7, .given = {}, .lastForeign = 7, .frontmost = 3}), 3);
}

TEST(ResolveSourcePID, NeverAnswersWithVorqItself) {
    EXPECT_EQ(resolveSourcePID({.own = 7, .given = 7, .lastForeign = 7, .frontmost = 7}),
              std::nullopt);
    EXPECT_EQ(resolveSourcePID({.own = 7, .given = {}, .lastForeign = {}, .frontmost = {}}),
              std::nullopt);
}

} // namespace
} // namespace vorq
