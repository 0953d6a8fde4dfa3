#include "app/desktop/DesktopCommand.h"

#include "app/cli/SettleSession.h"
#include "app/cli/Terminal.h"
#include "app/desktop/DeleteProgram.h"
#include "app/desktop/DesktopProgram.h"
#include "app/desktop/HostSystem.h"
#include "app/desktop/UserLanguage.h"
#include "app/instance/ApplicationService.h"
#include "app/instance/Courier.h"
#include "backend/account/SignInUrl.h"
#include "platform/AppPaths.h"

#include <QApplication>
#include <QDir>
#include <QLockFile>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

int complain(const QString& sentence) {
    Terminal().complain(sentence);
    return 1;
}

int statusOf(const RunningInstance::Outcome& outcome) {
    return outcome ? 0 : complain(outcome.error());
}

bool canOpen(const QUrl& url) {
    return SignInUrl::handoffCode(url).has_value() || SignInUrl::isOAuthCallback(url);
}

// A preview is open in one run, and that has begun.
RunningInstance::Outcome handOver(RunningInstance& instance, const DesktopArguments& arguments,
                                  const VerbSource& source) {
    if (!arguments.previews.isEmpty())
        return std::unexpected(u"Vorq is running already. Use vorq preview %1 on."_s.arg(
            previewNames.nameOf(arguments.previews.front())));
    return instance.handOver(arguments, source);
}

// Keeps a second Vorq from starting where there is no bus to find the first one by.
QString lockPath(const HostSystem& system) {
    const QString folder = system.lockFolder();
    QDir().mkpath(folder);
    return folder + u"/vorq.lock"_s;
}

struct Ending {
    int status = 0;
    bool isToBeDeleted = false;
};

Ending runProgram(const HostSystem& system, ApplicationService& service,
                  const DesktopArguments& arguments, const VerbSource& source) {
    const std::unique_ptr<DesktopPlatform> platform = system.makePlatform();
    const UserLanguage language(platform->paths().resourcesFolder());
    DesktopProgram program(service, *platform);
    const int status = program.run(arguments, source);
    return {status, program.isToBeDeleted()};
}

Ending runWithoutBus(const HostSystem& system, ApplicationService& service,
                     const DesktopArguments& arguments, const VerbSource& source) {
    QLockFile lock(lockPath(system));
    lock.setStaleLockTime(0);
    if (!lock.tryLock() && lock.error() == QLockFile::LockFailedError)
        return {complain(u"Vorq is running already, and without a session bus it "
                         "cannot be told anything."_s)};
    Terminal().complain(u"There is no session bus: Vorq runs, but commands and links "
                        "cannot reach it."_s);
    return runProgram(system, service, arguments, source);
}

// Another start may have been faster; then it is the one that runs.
Ending runAsInstance(const HostSystem& system, const DesktopArguments& arguments,
                     const VerbSource& source) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    ApplicationService service(bus);
    if (service.claim()) return runProgram(system, service, arguments, source);
    if (!bus.isConnected()) return runWithoutBus(system, service, arguments, source);
    RunningInstance running(bus);
    return {statusOf(handOver(running, arguments, source))};
}

} // namespace

std::optional<int> handToRunningInstance(const OpenArguments& arguments) {
    if (!canOpen(QUrl(arguments.url))) return std::nullopt;
    Courier courier;
    if (!courier.instance().exists()) return std::nullopt;
    if (const int status = statusOf(courier.instance().open(arguments.url)); status != 0)
        return status;
    const auto outcome = courier.instance().outcomeOf(arguments.url);
    if (!outcome) return complain(outcome.error());
    if (outcome->isEmpty()) return 0;
    return Terminal().print(outcome->toUtf8() + '\n') ? 0 : 1;
}

int runDesktopCommand(int& argc, char** argv, const DesktopArguments& arguments,
                      const HostSystem& system) {
    VerbSource source{.process = {}, .given = system.startOfThisProcess()};
    std::unique_ptr<ApplicationBirth> birth;
    {
        Courier courier;
        // Before anything else can come to the front.
        if (arguments.verb != Verb::Launch) source.process = system.frontmostProcess();
        if (courier.instance().exists())
            return statusOf(handOver(courier.instance(), arguments, source));
        if (!needsRunningProgram(arguments.verb) && system.hasScreen())
            birth = system.prepareApplication(courier.bus());
    }
    if (needsRunningProgram(arguments.verb)) {
        Terminal().complain(u"Vorq is not running."_s);
        return arguments.verb == Verb::Quit ? 0 : 1;
    }
    if (!birth)
        return complain(u"Vorq needs a desktop to run on. In a terminal without one, "
                        "use vorq ask."_s);
    const QApplication application(argc, argv);
    birth.reset();
    QGuiApplication::setApplicationDisplayName(u"Vorq"_s);
    QGuiApplication::setDesktopFileName(ApplicationService::name);
    const Ending ending = runAsInstance(system, arguments, source);
    unwindTasks();
    if (ending.isToBeDeleted) deleteProgram(*system.makePlatform());
    return ending.status;
}

} // namespace vorq
