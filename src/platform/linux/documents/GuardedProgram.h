#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <chrono>
#include <cstdint>
#include <stop_token>

namespace vorq {

/// A run of a program that is not trusted to end, to be brief, or to leave things alone.
struct GuardedRun {
    QString program; ///< a name is looked up on the path
    QStringList arguments;
    QString inputPath; ///< its standard input; where empty, `input` is
    QByteArray input = {};
    QString folder = {};                 ///< its home and working directory; where empty, ours
    bool isAlone = false;                ///< cut off from the network, the display and the buses
    qint64 outputLimit;                  ///< in bytes, after which it is killed
    std::chrono::milliseconds timeLimit; ///< of the processor, each process has four times that
    quint64 memoryLimit;                 ///< in bytes of address space, for each of its processes
};

struct GuardedOutput {
    enum class End : std::uint8_t {
        Exited,
        Crashed,
        Flooded, ///< it had more to say than the limit
        TimedOut,
        Stopped,
        NotStarted,
    };
    End end = End::NotStarted;
    int status = 0; ///< if it exited
    QByteArray bytes = {};
};

/// Runs the program and gives what it wrote to its standard output. Blocks until it has ended; on
/// any thread, without an event loop. It and the processes that it has started do not outlive the
/// call: they are killed. Where this program is killed itself meanwhile, the program dies with it,
/// but what that has started ends by its limits alone.
[[nodiscard]] GuardedOutput runGuarded(const GuardedRun& run, const std::stop_token& stop);

} // namespace vorq
