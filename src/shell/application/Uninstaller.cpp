#include "shell/application/Uninstaller.h"

#include "library/store/LibraryStore.h"
#include "platform/AppPaths.h"
#include "platform/BackendAtLogin.h"
#include "platform/Defaults.h"
#include "platform/Installation.h"
#include "platform/LoginItem.h"
#include "shell/notices/ShellLog.h"
#include "support/files/Discard.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <map>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Removal = std::expected<void, QString> (*)(const QString& path);

// What could not be removed, by the reason. An installation fails as a whole.
class Failures {
    Q_DECLARE_TR_FUNCTIONS(Uninstaller)

  public:
    void remove(const QString& path, Removal removal) {
        const auto outcome = removal(path);
        if (outcome) return;
        qCWarning(shellLog, "Vorq could not remove %s: %s", qUtf8Printable(path),
                  qUtf8Printable(outcome.error()));
        m_paths[outcome.error()] += path;
    }

    [[nodiscard]] QStringList sentences() const {
        QStringList all;
        for (const auto& [reason, paths] : m_paths)
            all +=
                paths.size() == 1
                    ? u"%1: %2"_s.arg(paths.front(), reason)
                    : tr("%1 and %2 more: %3").arg(paths.front()).arg(paths.size() - 1).arg(reason);
        return all;
    }

  private:
    std::map<QString, QStringList> m_paths;
};

} // namespace

QStringList Uninstaller::uninstall() const {
    // While all of it is there to be looked at.
    const QStringList advice = m_ports.installation.advice();
    QStringList left;
    unregisterOpenAtLogin(left);
    removeBackend(left);
    Failures failures;
    for (const QString& file : m_ports.installation.files())
        failures.remove(file, discard);
    const QString library = LibraryStore::folderIn(m_ports.paths.applicationSupportFolder());
    failures.remove(QFileInfo(library).path(), discard);
    failures.remove(m_ports.paths.cacheFolder(), removeForGood);
    if (const auto erased = m_ports.defaults.erase(); !erased) {
        qCWarning(shellLog, "Vorq could not remove its settings: %s",
                  qUtf8Printable(erased.error()));
        left += erased.error();
    }
    // With what the user or the backend keeps beside the settings.
    failures.remove(m_ports.paths.settingsFolder(), discard);
    return left + failures.sentences() + advice;
}

void Uninstaller::unregisterOpenAtLogin(QStringList& left) const {
    const auto outcome = m_ports.loginItem.unregisterAtLogin();
    if (outcome) return;
    qCWarning(shellLog, "Vorq Open at Login unregister failed: %s",
              qUtf8Printable(outcome.error()));
    left +=
        QCoreApplication::translate("Uninstaller", "The start at login: %1").arg(outcome.error());
}

// Before its program and its accounts go.
void Uninstaller::removeBackend(QStringList& left) const {
    const auto outcome = m_ports.backend.remove();
    if (outcome) return;
    qCWarning(shellLog, "Vorq could not remove the local backend: %s",
              qUtf8Printable(outcome.error()));
    left += outcome.error();
}

} // namespace vorq
