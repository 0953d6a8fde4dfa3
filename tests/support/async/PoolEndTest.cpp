// What becomes of work on other threads when the program ends.

#include "support/async/OnPool.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <thread>

namespace vorq {
namespace {

using namespace std::chrono_literals;

// As a file on a network mount that is gone.
void hangForGood() {
    while (true)
        std::this_thread::sleep_for(1h);
}

// What follows main().
[[noreturn]] void endProgram() {
    QCoreApplication::instance()->~QCoreApplication();
    std::exit(0);
}

TEST(PoolEndDeathTest, WorkThatHangsDoesNotKeepTheProgram) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EXIT(
        {
            for (int i = 0; i < 20; ++i) // some wait for a thread
                leaveToPool(hangForGood);
            endProgram();
        },
        testing::ExitedWithCode(0), "");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 60s);
}

TEST(PoolEndDeathTest, WorkThatIsUnderWayIsFinished) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            leaveToPool([] {
                std::this_thread::sleep_for(200ms);
                std::fputs("on the disk", stderr);
            });
            endProgram();
        },
        testing::ExitedWithCode(0), "on the disk");
}

} // namespace
} // namespace vorq
