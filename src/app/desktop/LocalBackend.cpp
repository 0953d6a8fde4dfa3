#include "app/desktop/LocalBackend.h"

#include "app/cli/Terminal.h"
#include "backend/api/BaseURL.h"
#include "platform/AppPaths.h"
#include "platform/DesktopPlatform.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace vorq {

std::shared_ptr<BackendAtLogin> localBackend(DesktopPlatform& platform) {
    return platform.makeBackendAtLogin(
        QUrl(resolveBaseURL(readBaseURLCandidates(platform.paths()))));
}

int switchBackend(DesktopPlatform& platform, bool isOn, Terminal& terminal) {
    const auto backend = localBackend(platform);
    const auto outcome = isOn ? backend->switchOn() : backend->switchOff();
    if (!outcome) {
        terminal.complain(outcome.error());
        return 1;
    }
    const QString address = resolveBaseURL(readBaseURLCandidates(platform.paths()));
    const QString said =
        isOn ? u"The local backend starts at login from now on, and answers at %1.\n"_s.arg(address)
             : u"The local backend no longer starts at login. If it runs, it goes on "
               "until you log out.\n"_s;
    return terminal.print(said.toUtf8()) ? 0 : 1;
}

} // namespace vorq
