#include "shell/Uninstaller.h"

#include "library/LibraryStore.h"
#include "platform/AppPaths.h"
#include "platform/Defaults.h"
#include "platform/Installation.h"
#include "platform/LoginItem.h"
#include "support/Discard.h"

#include <QFileInfo>

namespace vorq {
namespace {

using Removal = std::expected<void, QString> (*)(const QString& path);

void take(const QString& path, Removal removal, QStringList& left) {
    const auto outcome = removal(path);
    if (outcome) return;
    const QString sentence = QStringLiteral("%1: %2").arg(path, outcome.error());
    qWarning("Vorq could not remove %s", qUtf8Printable(sentence));
    left += sentence;
}

} // namespace

QStringList Uninstaller::uninstall() const {
    QStringList left;
    unregisterOpenAtLogin(left);
    for (const QString& file : m_ports.installation.files())
        take(file, discard, left);
    const QString library = LibraryStore::folderIn(m_ports.paths.applicationSupportFolder());
    take(QFileInfo(library).path(), discard, left);
    take(m_ports.paths.cacheFolder(), removeForGood, left);
    if (const auto erased = m_ports.defaults.eraseForGood(); !erased) {
        qWarning("Vorq could not remove its settings: %s", qUtf8Printable(erased.error()));
        left += erased.error();
    }
    if (const QString advice = m_ports.installation.advice(); !advice.isEmpty()) left += advice;
    return left;
}

void Uninstaller::unregisterOpenAtLogin(QStringList& left) const {
    const auto outcome = m_ports.loginItem.unregisterAtLogin();
    if (outcome) return;
    qWarning("Vorq Open at Login unregister failed: %s", qUtf8Printable(outcome.error()));
    left += QStringLiteral("The start at login: %1").arg(outcome.error());
}

} // namespace vorq
