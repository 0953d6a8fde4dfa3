#include "app/desktop/DeleteProgram.h"

#include "app/desktop/LocalBackend.h"
#include "platform/linux/desktop/XdgInstallation.h"
#include "platform/linux/desktop/XdgLoginItem.h"
#include "platform/linux/desktop/XdgPaths.h"
#include "platform/portable/SettingsFile.h"
#include "shell/application/Uninstaller.h"
#include "shell/dialogs/AlertBox.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace vorq {
namespace {

void tell(const QStringList& left) {
    QEventLoop loop;
    AlertBox alerts;
    alerts.show({QStringLiteral("Vorq is deleted, but not all of it."),
                 left.join(u'\n'),
                 {QStringLiteral("Quit Vorq")}},
                [&loop](qsizetype) { loop.quit(); });
    loop.exec();
}

} // namespace

void deleteProgram() {
    const XdgPaths paths;
    SettingsFile settings(settingsPath(paths));
    XdgLoginItem loginItem(settings, configurationFolder(paths),
                           QCoreApplication::applicationFilePath());
    const XdgInstallation installation(QCoreApplication::applicationFilePath(),
                                       XdgInstallation::dataFolders(paths));
    const auto backend = localBackend(paths);
    const Uninstaller uninstaller({loginItem, *backend, installation, paths, settings});
    const QStringList left = uninstaller.uninstall();
    if (!left.isEmpty()) tell(left);
}

} // namespace vorq
