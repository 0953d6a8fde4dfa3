#include "app/desktop/DeleteProgram.h"

#include "app/desktop/LocalBackend.h"
#include "app/desktop/UserLanguage.h"
#include "platform/AppPaths.h"
#include "platform/Defaults.h"
#include "platform/DesktopPlatform.h"
#include "platform/Installation.h"
#include "platform/LoginItem.h"
#include "shell/application/Uninstaller.h"
#include "shell/dialogs/AlertBox.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace vorq {
namespace {

void tell(const QStringList& left) {
    QEventLoop loop;
    AlertBox alerts;
    alerts.show(
        {QCoreApplication::translate("DeleteProgram", "Vorq is deleted, but not all of it."),
         left.join(u'\n'),
         {QCoreApplication::translate("DeleteProgram", "Quit Vorq")}},
        [&loop](qsizetype) { loop.quit(); });
    loop.exec();
}

} // namespace

void deleteProgram(DesktopPlatform& platform) {
    const UserLanguage language(platform.paths().resourcesFolder());
    const auto backend = localBackend(platform);
    const Uninstaller uninstaller({platform.loginItem(), *backend, platform.installation(),
                                   platform.paths(), platform.defaults()});
    const QStringList left = uninstaller.uninstall();
    if (!left.isEmpty()) tell(left);
}

} // namespace vorq
