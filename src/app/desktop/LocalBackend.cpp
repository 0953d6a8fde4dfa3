#include "app/desktop/LocalBackend.h"

#include "app/cli/Terminal.h"
#include "backend/api/BaseURL.h"
#include "platform/linux/desktop/LinuxBackendAtLogin.h"
#include "platform/linux/desktop/XdgPaths.h"

#include <QCoreApplication>

namespace vorq {

std::shared_ptr<BackendAtLogin> localBackend(const AppPaths& paths) {
    return std::make_shared<LinuxBackendAtLogin>(LinuxBackendAtLogin::Setting{
        .configurationFolder = configurationFolder(paths),
        .gateway = LinuxBackendAtLogin::findGateway(QCoreApplication::applicationFilePath()),
        .address = QUrl(resolveBaseURL(readBaseURLCandidates(paths)))});
}

int switchBackend(bool isOn, Terminal& terminal) {
    const XdgPaths paths;
    const auto backend = localBackend(paths);
    const auto outcome = isOn ? backend->switchOn() : backend->switchOff();
    if (!outcome) {
        terminal.complain(outcome.error());
        return 1;
    }
    const QString address = resolveBaseURL(readBaseURLCandidates(paths));
    const QString said =
        isOn ? QStringLiteral("The local backend starts at login from now on, and answers at %1.\n")
                   .arg(address)
             : QStringLiteral("The local backend no longer starts at login. If it runs, it goes on "
                              "until you log out.\n");
    return terminal.print(said.toUtf8()) ? 0 : 1;
}

} // namespace vorq
