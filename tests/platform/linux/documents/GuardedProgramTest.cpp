// Programs that keep to none of their limits.

#include "platform/linux/documents/GuardedProgram.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

namespace vorq {
namespace {

using namespace std::chrono_literals;

using End = GuardedOutput::End;

class GuardedProgramTest : public testing::Test {
  protected:
    // A shell that does what the script says, within limits that nobody reaches by chance.
    [[nodiscard]] GuardedRun shell(const QString& script) const {
        return {.program = "sh",
                .arguments = {"-c", script},
                .inputPath = "/dev/null",
                .folder = m_folder.path(),
                .outputLimit = 1 << 20,
                .timeLimit = 60s,
                .memoryLimit = quint64{1} << 30};
    }
    [[nodiscard]] QByteArray linesOf(const QString& script) const {
        const GuardedOutput output = runGuarded(shell(script), {});
        EXPECT_EQ(output.end, End::Exited);
        return output.bytes;
    }

    QTemporaryDir m_folder;
};

TEST_F(GuardedProgramTest, ThatEndsGivesItsOutputAndStatus) {
    const GuardedOutput output = runGuarded(shell("echo one; echo two >&2; exit 3"), {});
    EXPECT_EQ(output.end, End::Exited);
    EXPECT_EQ(output.status, 3);
    EXPECT_EQ(output.bytes, "one\n");
}

TEST_F(GuardedProgramTest, ThatIsMissingHasNotStarted) {
    GuardedRun run = shell("");
    run.program = "/nowhere/sh";
    EXPECT_EQ(runGuarded(run, {}).end, End::NotStarted);
}

TEST_F(GuardedProgramTest, ThatHangsEndsWithItsTime) {
    GuardedRun run = shell("echo begun; sleep 600");
    run.timeLimit = 300ms;
    QElapsedTimer elapsed;
    elapsed.start();
    const GuardedOutput output = runGuarded(run, {});
    EXPECT_EQ(output.end, End::TimedOut);
    EXPECT_GE(elapsed.elapsed(), 300);
    EXPECT_LT(elapsed.elapsed(), 60'000);
}

TEST_F(GuardedProgramTest, ThatIsStoppedEndsSoon) {
    std::stop_source stop;
    const QString mark = m_folder.filePath("begun");
    std::jthread stopper([&] {
        while (!QFile::exists(mark))
            std::this_thread::sleep_for(5ms);
        stop.request_stop();
    });
    EXPECT_EQ(runGuarded(shell("touch begun; sleep 600"), stop.get_token()).end, End::Stopped);
}

TEST_F(GuardedProgramTest, ThatSaysMoreThanItMayIsCutOff) {
    GuardedRun run = shell("yes");
    run.outputLimit = 1001;
    const GuardedOutput output = runGuarded(run, {});
    EXPECT_EQ(output.end, End::Flooded);
    EXPECT_EQ(output.bytes.size(), 1001);
}

// tail holds all of it before it says a byte.
TEST_F(GuardedProgramTest, ThatTakesMoreMemoryThanItMayIsRefusedIt) {
    const QString script = "head -c 300000000 /dev/zero | tail -c 300000000 | wc -c";
    EXPECT_EQ(linesOf(script), "300000000\n");
    GuardedRun run = shell(script);
    run.memoryLimit = quint64{200} << 20;
    EXPECT_EQ(runGuarded(run, {}).bytes, "0\n");
}

TEST_F(GuardedProgramTest, ThatWritesALargeFileIsStopped) {
    // Without the blocks in between, which no disk need hold.
    EXPECT_EQ(linesOf("dd if=/dev/zero of=small bs=1 count=1 seek=400M && echo done"), "done\n");
    EXPECT_EQ(linesOf("dd if=/dev/zero of=large bs=1 count=1 seek=600M && echo done"), "");
}

TEST_F(GuardedProgramTest, HasFourTimesItsTimeOfTheProcessor) {
    GuardedRun run = shell("ulimit -t");
    run.timeLimit = 2500ms;
    EXPECT_EQ(runGuarded(run, {}).bytes, "12\n");
}

TEST_F(GuardedProgramTest, LeavesNothingRunningWhenItEnds) {
    const auto sleeper = linesOf("sleep 600 > /dev/null & echo $!").trimmed().toInt();
    ASSERT_GT(sleeper, 1);
    // Killed, it is gone or a zombie that nobody has waited for yet.
    const auto isGone = [sleeper] {
        QFile status("/proc/" + QString::number(sleeper) + "/stat");
        return !status.open(QIODevice::ReadOnly) || status.readAll().contains(") Z ");
    };
    for (int wait = 0; wait < 1000 && !isGone(); ++wait)
        std::this_thread::sleep_for(5ms);
    EXPECT_TRUE(isGone());
}

TEST_F(GuardedProgramTest, LeavesNoCore) {
    EXPECT_EQ(linesOf("ulimit -c"), "0\n");
    EXPECT_EQ(runGuarded(shell("kill -SEGV $$"), {}).end, End::Crashed);
}

} // namespace
} // namespace vorq
