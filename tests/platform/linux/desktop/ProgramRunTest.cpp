#include "platform/linux/desktop/ProgramRun.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <thread>

namespace vorq {
namespace {

using namespace std::chrono_literals;

std::optional<QByteArray> shell(const QString& script, std::chrono::milliseconds limit,
                                const std::stop_token& stop = {}) {
    return outputOf("sh", {"-c", script}, limit, stop);
}

TEST(ProgramRun, GivesWhatTheProgramWroteHoweverMuch) {
    EXPECT_EQ(shell("printf one; echo two >&2", 30s), "one");
    EXPECT_EQ(shell("head -c 1000000 /dev/zero", 30s).value_or("").size(), 1000000);
    EXPECT_EQ(shell("cat", 30s), "") << "there is no input";
}

TEST(ProgramRun, GivesNothingOfOneThatFails) {
    EXPECT_EQ(shell("echo half; exit 3", 30s), std::nullopt);
    EXPECT_EQ(shell("kill -9 $$", 30s), std::nullopt);
    EXPECT_EQ(outputOf("there-is-no-such-program", {}, 30s), std::nullopt);
}

TEST(ProgramRun, KillsOneThatTakesTooLongOrIsStopped) {
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_EQ(outputOf("sleep", {"600"}, 100ms), std::nullopt);
    std::stop_source stop;
    std::jthread stopper([&stop] {
        std::this_thread::sleep_for(100ms);
        stop.request_stop();
    });
    EXPECT_EQ(outputOf("sleep", {"600"}, 600s, stop.get_token()), std::nullopt);
    EXPECT_LT(elapsed.elapsed(), 60'000);
}

} // namespace
} // namespace vorq
