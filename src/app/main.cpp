#include "app/cli/AskCommand.h"
#include "app/cli/CommandLine.h"
#include "app/cli/LibraryCommands.h"
#include "app/cli/OpenCommand.h"
#include "app/cli/SettleSession.h"
#include "app/cli/Terminal.h"
#include "app/cli/UnixSignals.h"
#include "app/desktop/DesktopCommand.h"
#include "app/desktop/DoctorCommand.h"
#include "app/desktop/LocalBackend.h"
#include "app/desktop/PreviewCommand.h"
#include "app/linux/LinuxHostSystem.h"
#include "backend/http/CurlTransport.h"
#include "capture/attachments/FileAttachmentReader.h"
#include "capture/selection/SelectionCapture.h"
#include "core/VorqAppState.h"
#include "platform/AppPaths.h"
#include "platform/NotesBridge.h"

#include <QCoreApplication>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int signalExitBase = 128;
constexpr std::chrono::milliseconds settleLimit{2000};
constexpr std::chrono::milliseconds settleLimitAfterSignal{300};

// The application as a command of the terminal needs it: no windows, no capture.
class TerminalApplication {
  public:
    /// The platform must outlive it.
    explicit TerminalApplication(DesktopPlatform& platform) : m_platform(platform) {}

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
        settleSession(m_state.account().tokens(), m_platform.clock(),
                      status < signalExitBase ? settleLimit : settleLimitAfterSignal);
        return status;
    }

  private:
    DesktopPlatform& m_platform;
    CurlTransport m_transport{m_platform.clock()};
    NoSelectionCapture m_capture;
    NoNotesBridge m_notes;
    VorqAppState m_state{{m_platform.clock(), m_platform.defaults(), m_platform.paths(),
                          m_transport, m_capture, m_notes}};
    Terminal m_terminal;
};

// Runs one command, whatever application object it needs.
class CommandRunner {
  public:
    CommandRunner(int& argc, char** argv) : m_argc(argc), m_argv(argv) {}

    int operator()(const AskArguments& arguments) const {
        const QCoreApplication application(m_argc, m_argv);
        return unwound([this, &arguments] {
            const auto platform = m_system.makePlatform();
            FileAttachmentReader reader(platform->documentTools(), PromptAttachment::Pipes::Read);
            // Before the command takes signals to the event loop: while standard input is read
            // they end the program at once.
            const auto question = AskCommand::read(arguments, reader);
            if (!question) {
                if (!question.error().sentence.isEmpty())
                    Terminal().complain(question.error().sentence);
                return question.error().exitStatus;
            }
            TerminalApplication terminal(*platform);
            AskCommand command(terminal.state(), terminal.terminal());
            return terminal.run(command, [&] { command.start(*question); });
        });
    }

    int operator()(const OpenArguments& arguments) const {
        if (const auto status = handToRunningInstance(arguments)) return *status;
        const QCoreApplication application(m_argc, m_argv);
        return unwound([this, &arguments] {
            const auto platform = m_system.makePlatform();
            TerminalApplication terminal(*platform);
            OpenCommand command(terminal.state(), terminal.terminal());
            return terminal.run(command, [&] { command.start(arguments.url); });
        });
    }

    int operator()(const LibraryCommand& command) const {
        const QCoreApplication application(m_argc, m_argv);
        const auto platform = m_system.makePlatform();
        Terminal terminal;
        return LibraryCommands(platform->paths().applicationSupportFolder(), platform->clock(),
                               terminal)
            .run(command);
    }

    int operator()(const EnableAccessibility&) const {
        const QCoreApplication application(m_argc, m_argv);
        Terminal terminal;
        const auto outcome = m_system.enableAccessibility();
        if (!outcome) {
            terminal.complain(outcome.error());
            return 1;
        }
        return terminal.print("Accessibility is on. Programs that run already may have to be "
                              "started again.\n")
                   ? 0
                   : 1;
    }

    int operator()(const SwitchBackend& command) const {
        const QCoreApplication application(m_argc, m_argv);
        Terminal terminal;
        return switchBackend(*m_system.makePlatform(), command.isOn, terminal);
    }

    int operator()(const SwitchPreview& command) const {
        if (const auto status = switchPreviewOfRunningInstance(command)) return *status;
        const QCoreApplication application(m_argc, m_argv);
        return switchStoredPreview(*m_system.makePlatform(), command);
    }

    int operator()(const ListPreviews&) const {
        if (const auto status = listPreviewsOfRunningInstance()) return *status;
        const QCoreApplication application(m_argc, m_argv);
        return listStoredPreviews(*m_system.makePlatform());
    }

    int operator()(const Doctor& command) const {
        return runDoctorCommand(m_argc, m_argv, command, m_system);
    }

    int operator()(const DesktopArguments& arguments) const {
        return runDesktopCommand(m_argc, m_argv, arguments, m_system);
    }

    int operator()(const ShowText& shown) const {
        return Terminal().print(shown.text.toUtf8()) ? 0 : 1;
    }

    int operator()(const UsageError& error) const {
        Terminal().complain(u"vorq: %1 See vorq --help."_s.arg(error.message));
        return 2;
    }

  private:
    template<typename Run>
    static int unwound(Run run) {
        const int status = run();
        unwindTasks();
        return status;
    }

    int& m_argc;
    char** m_argv;
    LinuxHostSystem m_system;
};

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

// Nothing throws here but for lack of memory, which ends the program either way.
// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char** argv) {
    vorq::openStandardDescriptors();
    // Lines begin with Vorq, whatever their category.
    qSetMessagePattern(u"%{message}"_s);
    QCoreApplication::setApplicationName(u"vorq"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(VORQ_VERSION));
    QStringList arguments;
    for (int index = 1; index < argc; ++index)
        arguments += QString::fromLocal8Bit(argv[index]);
    const int status =
        std::visit(vorq::CommandRunner(argc, argv), vorq::parseCommandLine(arguments));
    vorq::endBySignal(status);
    return status;
}
