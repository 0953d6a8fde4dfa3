#include "platform/linux/desktop/SystemdUserUnit.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <utility>

namespace vorq {
namespace {

constexpr int answerLimit = 5000; // milliseconds

} // namespace

SystemdUserUnit::SystemdUserUnit(QString name, QString configurationFolder)
    : m_name(std::move(name)), m_configurationFolder(std::move(configurationFolder)) {}

bool SystemdUserUnit::hasManager() {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFile::exists(runtime + QStringLiteral("/systemd/private"));
}

bool SystemdUserUnit::isKnown() const {
    return hasManager() && run(QStringLiteral("cat"));
}

QString SystemdUserUnit::link() const {
    return m_configurationFolder + QStringLiteral("/systemd/user/default.target.wants/") + m_name;
}

bool SystemdUserUnit::isEnabled() const {
    return QFile::exists(link()) || QFileInfo(link()).isSymLink();
}

bool SystemdUserUnit::disable() const {
    if (hasManager() && run(QStringLiteral("disable")) && !isEnabled()) return true;
    return !isEnabled() || QFile::remove(link());
}

bool SystemdUserUnit::run(const QString& command) const {
    QProcess systemctl;
    systemctl.setStandardInputFile(QProcess::nullDevice());
    systemctl.setStandardOutputFile(QProcess::nullDevice());
    systemctl.setStandardErrorFile(QProcess::nullDevice());
    systemctl.start(QStringLiteral("systemctl"), {QStringLiteral("--user"), command, m_name});
    if (!systemctl.waitForFinished(answerLimit)) {
        systemctl.kill();
        systemctl.waitForFinished(answerLimit);
        return false;
    }
    return systemctl.exitStatus() == QProcess::NormalExit && systemctl.exitCode() == 0;
}

} // namespace vorq
