#include "platform/linux/desktop/SystemdUserUnit.h"

#include "platform/linux/desktop/ProgramRun.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace vorq {
namespace {

constexpr std::chrono::milliseconds answerLimit{5000};

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
    return outputOf(QStringLiteral("systemctl"), {QStringLiteral("--user"), command, m_name},
                    answerLimit)
        .has_value();
}

} // namespace vorq
