#include "platform/linux/documents/GuardedProgram.h"

#include "platform/linux/documents/ChildGuard.h"

#include <QDeadlineTimer>
#include <QProcess>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int guardInterval = 20; // milliseconds, in which a stop is seen

// In milliseconds: a program may hang in the kernel though killed.
constexpr int guardedDeathLimit = 1000;

// What several threads may use in its time. It ends what loops when nobody is left to kill it.
std::chrono::seconds processorLimit(std::chrono::milliseconds time) {
    constexpr int threads = 4;
    return std::chrono::ceil<std::chrono::seconds>(time) * threads;
}

QProcessEnvironment environmentOf(const GuardedRun& run) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    if (!run.folder.isEmpty())
        for (const char* name : {"HOME", "TMPDIR", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME",
                                 "XDG_CACHE_HOME", "XDG_DATA_HOME"})
            environment.insert(QString::fromLatin1(name), run.folder);
    if (run.isAlone)
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS",
                                 "AT_SPI_BUS_ADDRESS", "SSH_AUTH_SOCK", "SESSION_MANAGER"})
            environment.remove(QString::fromLatin1(name));
    return environment;
}

// Its processes are one group, whose number is that of the first.
void killGroup(qint64 leader) {
    if (leader > 1) ::kill(static_cast<pid_t>(-leader), SIGKILL);
}

class Guard {
    using End = GuardedOutput::End;

  public:
    Guard(const GuardedRun& run, const std::stop_token& stop)
        : m_run(run),
          m_stop(stop),
          m_child({run.isAlone, run.memoryLimit, processorLimit(run.timeLimit)}),
          m_deadline(run.timeLimit) {}

    GuardedOutput result() {
        GuardedOutput output;
        if (!start()) return output;
        const qint64 leader = m_process->processId();
        output.end = wait(output.bytes);
        killGroup(leader);
        if (output.end == GuardedOutput::End::Exited) {
            output.status = m_process->exitCode();
        } else {
            m_process->kill();
            // Its object would wait for far longer.
            if (!m_process->waitForFinished(guardedDeathLimit) &&
                m_process->state() != QProcess::NotRunning)
                static_cast<void>(m_process.release());
        }
        return output;
    }

  private:
    bool start() {
        QProcess& process = *m_process;
        process.setProcessEnvironment(environmentOf(m_run));
        if (!m_run.folder.isEmpty()) process.setWorkingDirectory(m_run.folder);
        if (!m_run.inputPath.isEmpty()) process.setStandardInputFile(m_run.inputPath);
        process.setStandardErrorFile(QProcess::nullDevice());
        process.setChildProcessModifier([child = m_child] { child.apply(); });
        process.start(m_run.program, m_run.arguments);
        if (!process.waitForStarted()) return false;
        if (m_run.inputPath.isEmpty()) {
            process.write(m_run.input);
            process.closeWriteChannel();
        }
        return true;
    }

    End wait(QByteArray& bytes) {
        QProcess& process = *m_process;
        for (;;) {
            if (m_stop.stop_requested()) return End::Stopped;
            if (m_deadline.hasExpired()) return End::TimedOut;
            const bool isRunning = process.state() != QProcess::NotRunning;
            if (isRunning) process.waitForReadyRead(guardInterval);
            bytes += process.readAllStandardOutput();
            if (bytes.size() > m_run.outputLimit) {
                bytes.truncate(m_run.outputLimit);
                return End::Flooded;
            }
            if (!isRunning)
                return process.exitStatus() == QProcess::NormalExit ? End::Exited : End::Crashed;
        }
    }

    const GuardedRun& m_run;
    const std::stop_token& m_stop;
    ChildGuard m_child;
    QDeadlineTimer m_deadline;
    std::unique_ptr<QProcess> m_process = std::make_unique<QProcess>();
};

} // namespace

GuardedOutput runGuarded(const GuardedRun& run, const std::stop_token& stop) {
    return Guard(run, stop).result();
}

} // namespace vorq
