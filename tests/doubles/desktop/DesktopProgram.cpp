#include "doubles/desktop/DesktopProgram.h"

#include <QFile>
#include <QStandardPaths>

#include <csignal>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

constexpr int startLimit = 10'000; // milliseconds
constexpr int toolLimit = 20'000;

QString executable(const QString& program, const QString& package) {
    if (program.startsWith(u'/') && QFile::exists(program)) return program;
    const QString path = QStandardPaths::findExecutable(program);
    if (!path.isEmpty()) return path;
    throw std::runtime_error("no program " + program.toStdString() + ": install the package " +
                             package.toStdString());
}

void prepare(QProcess& process, const QString& program, const QString& package,
             const QStringList& arguments, const QProcessEnvironment& environment) {
    process.setProgram(executable(program, package));
    process.setArguments(arguments);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

} // namespace

DesktopProgram::DesktopProgram(const QString& program, const QString& package,
                               const QStringList& arguments,
                               const QProcessEnvironment& environment) {
    prepare(m_process, program, package, arguments, environment);
    m_process.start();
    if (!m_process.waitForStarted(startLimit))
        throw std::runtime_error("cannot start " + program.toStdString() + ": " +
                                 m_process.errorString().toStdString());
}

DesktopProgram::~DesktopProgram() {
    kill();
}

void DesktopProgram::kill() {
    if (!isRunning()) return;
    m_process.kill();
    m_process.waitForFinished(startLimit);
}

QByteArray DesktopProgram::output() {
    m_output += m_process.readAll();
    return m_output;
}

QByteArray run(const QString& program, const QString& package, const QStringList& arguments,
               const QProcessEnvironment& environment) {
    QProcess process;
    prepare(process, program, package, arguments, environment);
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start();
    if (process.waitForFinished(toolLimit)) return process.readAllStandardOutput();
    process.kill();
    process.waitForFinished(startLimit);
    throw std::runtime_error(program.toStdString() +
                             " does not end: " + arguments.join(u' ').toStdString());
}

Stopped::Stopped(std::int32_t process) : m_process(process) {
    ::kill(m_process, SIGSTOP);
}

Stopped::~Stopped() {
    ::kill(m_process, SIGCONT);
}

bool Stopped::holds() const {
    QFile file(u"/proc/%1/stat"_s.arg(m_process));
    if (!file.open(QIODevice::ReadOnly)) return false;
    const QByteArray line = file.readAll();
    // The name before the state may hold anything, and ends with the last parenthesis.
    return line.mid(line.lastIndexOf(')') + 2).startsWith('T');
}

} // namespace vorq::desktop
