#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace vorq::desktop {

/// A program that a test started. It is killed at the end, and dies with the test in any case.
class DesktopProgram {
  public:
    /// Throws, naming the Debian package to install, if there is no such program.
    DesktopProgram(const QString& program, const QString& package, const QStringList& arguments,
                   const QProcessEnvironment& environment);
    DesktopProgram(const DesktopProgram&) = delete;
    DesktopProgram& operator=(const DesktopProgram&) = delete;
    ~DesktopProgram();

    [[nodiscard]] std::int32_t process() const {
        return static_cast<std::int32_t>(m_process.processId());
    }
    [[nodiscard]] bool isRunning() { return m_process.state() != QProcess::NotRunning; }

    /// Ends it at once, as a crash would.
    void kill();

    /// What it wrote so far, both channels.
    [[nodiscard]] QByteArray output();

    [[nodiscard]] QProcess& qt() { return m_process; }

  private:
    QProcess m_process;
    QByteArray m_output;
};

/// Runs a short tool and gives what it printed. Throws if it is missing or takes too long.
QByteArray run(const QString& program, const QString& package, const QStringList& arguments,
               const QProcessEnvironment& environment);

/// While it lives, a process of any program stands still, as one that hangs does.
class Stopped {
  public:
    explicit Stopped(std::int32_t process);
    Stopped(const Stopped&) = delete;
    Stopped& operator=(const Stopped&) = delete;
    ~Stopped();

    /// Whether it does stand still.
    [[nodiscard]] bool holds() const;

  private:
    std::int32_t m_process;
};

} // namespace vorq::desktop
