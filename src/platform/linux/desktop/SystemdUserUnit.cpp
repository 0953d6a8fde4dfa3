#include "platform/linux/desktop/SystemdUserUnit.h"

#include "platform/linux/desktop/ProgramRun.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::chrono::milliseconds answerLimit{5000};

} // namespace

SystemdUserUnit::SystemdUserUnit(QString name, QString configurationFolder)
    : m_name(std::move(name)), m_configurationFolder(std::move(configurationFolder)) {}

bool SystemdUserUnit::hasManager() {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFile::exists(runtime + u"/systemd/private"_s);
}

bool SystemdUserUnit::isKnown() const {
    return hasManager() && run(u"cat"_s);
}

QString SystemdUserUnit::link() const {
    return m_configurationFolder + u"/systemd/user/default.target.wants/"_s + m_name;
}

bool SystemdUserUnit::isEnabled() const {
    return QFile::exists(link()) || QFileInfo(link()).isSymLink();
}

bool SystemdUserUnit::disable() const {
    if (hasManager() && run(u"disable"_s) && !isEnabled()) return true;
    return !isEnabled() || QFile::remove(link());
}

bool SystemdUserUnit::run(const QString& command) const {
    return outputOf(u"systemctl"_s, {u"--user"_s, command, m_name}, answerLimit).has_value();
}

} // namespace vorq
