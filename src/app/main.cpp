#include "app/AskCommand.h"
#include "app/CommandLine.h"
#include "app/OpenCommand.h"
#include "app/Terminal.h"
#include "app/UnixSignals.h"
#include "backend/CurlTransport.h"
#include "core/VorqAppState.h"
#include "platform/linux/SettingsFile.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/XdgPaths.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace vorq {
namespace {

constexpr int signalExitBase = 128;
constexpr std::chrono::milliseconds settleLimit{2000};
constexpr std::chrono::milliseconds settleLimitAfterSignal{300};

// The application as a command of the terminal needs it: no windows, no capture.
class TerminalApplication {
  public:
    [[nodiscard]] VorqAppState& state() { return m_state; }
    [[nodiscard]] Terminal& terminal() { return m_terminal; }

    // Runs until the command has finished and gives its exit status.
    template<typename RunningCommand, typename Start>
    int run(RunningCommand& command, Start start) {
        UnixSignals unixSignals;
        QObject::connect(&unixSignals, &UnixSignals::received, &command,
                         [&command](int number) { command.stop(signalExitBase + number); });
        QObject::connect(&command, &RunningCommand::finished, qApp,
                         [](int status) { QCoreApplication::exit(status); });
        QMetaObject::invokeMethod(&command, start, Qt::QueuedConnection);
        const int status = QCoreApplication::exec();
        settleSession(status < signalExitBase ? settleLimit : settleLimitAfterSignal);
        return status;
    }

  private:
    // A refresh under way has spent the old token already; its new one must not be lost.
    void settleSession(Clock::Duration limit) {
        QEventLoop loop;
        TaskSlot settling;
        settling.restart([this, &loop](std::stop_token stop) -> QCoro::Task<> {
            co_await m_state.account().refreshSettled(stop);
            if (!stop.stop_requested()) loop.quit();
        });
        const Clock::TimerId timer = m_clock.after(limit, [&loop] { loop.quit(); });
        loop.exec();
        m_clock.cancel(timer);
    }

    SystemClock m_clock;
    XdgPaths m_paths;
    SettingsFile m_defaults{m_paths.settingsFolder() + QStringLiteral("/settings.json")};
    CurlTransport m_transport{m_clock};
    NoLocalRoutes m_routes;
    NoSelectionCapture m_capture;
    VorqAppState m_state{{m_clock, m_defaults, m_paths, m_transport, m_routes, m_capture}};
    Terminal m_terminal;
};

int runCommand(const AskArguments& arguments) {
    // Before signals are taken to the event loop: until then they end the program at once.
    const auto question = AskCommand::read(arguments);
    if (!question) {
        Terminal().complain(question.error());
        return 1;
    }
    TerminalApplication application;
    AskCommand command(application.state(), application.terminal());
    return application.run(command, [&] { command.start(*question); });
}

int runCommand(const OpenArguments& arguments) {
    TerminalApplication application;
    OpenCommand command(application.state(), application.terminal());
    return application.run(command, [&] { command.start(arguments.url); });
}

int runCommand(const ShowText& shown) {
    return Terminal().print(shown.text.toUtf8()) ? 0 : 1;
}

int runCommand(const UsageError& error) {
    Terminal().complain(QStringLiteral("vorq: %1 See vorq --help.").arg(error.message));
    return 2;
}

// A closed standard descriptor would be given to the next file opened, and be written into.
void openStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(descriptor, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) < 0) ::_exit(1);
}

// Ends by the signal itself, so that a shell knows of it and ends its loop, too.
void endBySignal(int status) {
    if (status <= signalExitBase) return;
    ::signal(status - signalExitBase, SIG_DFL);
    ::raise(status - signalExitBase);
}

} // namespace
} // namespace vorq

int main(int argc, char** argv) {
    vorq::openStandardDescriptors();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("vorq"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VORQ_VERSION));
    const int status = std::visit([](const auto& command) { return vorq::runCommand(command); },
                                  vorq::parseCommandLine(QCoreApplication::arguments().mid(1)));
    // Tasks that were stopped with the application still have to unwind.
    for (int round = 0; round < 8; ++round)
        QCoreApplication::sendPostedEvents();
    vorq::endBySignal(status);
    return status;
}
