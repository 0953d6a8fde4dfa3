#include "platform/linux/desktop/ProgramRun.h"

#include <QDeadlineTimer>
#include <QProcess>

#include <memory>

namespace vorq {
namespace {

constexpr int stopInterval = 50; // milliseconds, in which a stop is seen
constexpr int deathLimit = 1000; // milliseconds: a program may hang in the kernel though killed

bool hasEnded(QProcess& process, std::chrono::milliseconds limit, const std::stop_token& stop) {
    const QDeadlineTimer deadline(limit);
    while (!stop.stop_requested() && !deadline.hasExpired()) {
        if (process.waitForFinished(stopInterval)) return true;
        if (process.state() == QProcess::NotRunning)
            return process.error() != QProcess::FailedToStart;
    }
    return false;
}

} // namespace

std::optional<QByteArray> outputOf(const QString& program, const QStringList& arguments,
                                   std::chrono::milliseconds limit, const std::stop_token& stop) {
    auto process = std::make_unique<QProcess>();
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(program, arguments);
    if (!hasEnded(*process, limit, stop)) {
        process->kill();
        // Its object would wait for far longer.
        if (!process->waitForFinished(deathLimit) && process->state() != QProcess::NotRunning)
            static_cast<void>(process.release());
        return std::nullopt;
    }
    const bool hasSucceeded =
        process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0;
    return hasSucceeded ? std::optional(process->readAllStandardOutput()) : std::nullopt;
}

} // namespace vorq
