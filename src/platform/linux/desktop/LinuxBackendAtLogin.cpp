#include "platform/linux/desktop/LinuxBackendAtLogin.h"

#include "platform/linux/desktop/LoopbackAddress.h"
#include "platform/linux/desktop/UserProcesses.h"
#include "platform/linux/desktop/XdgLoginItem.h"
#include "support/files/DurableFile.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr int gatewayPort = 8787; // unless told otherwise
constexpr unsigned long pollInterval = 50;

const QString gatewayName = u"vorq-gateway"_s;
const QString gatewayHost = u"127.0.0.1"_s; // unless told otherwise
const QString serve = u"serve"_s;

} // namespace

LinuxBackendAtLogin::LinuxBackendAtLogin(Setting setting)
    : m_setting(std::move(setting)),
      m_unit(u"vorq-gateway.service"_s, m_setting.configurationFolder) {}

QString LinuxBackendAtLogin::findGateway(const QString& executable) {
    QString beside = QFileInfo(executable).path() + u'/' + gatewayName;
    if (QFileInfo(beside).isExecutable()) return beside;
    return QStandardPaths::findExecutable(gatewayName);
}

PortSupport LinuxBackendAtLogin::supported() const {
    if (!LoopbackAddress::of(m_setting.address))
        return std::unexpected(
            tr("The backend at %1 is not on this computer.").arg(m_setting.address.toString()));
    if (m_setting.gateway.isEmpty())
        return std::unexpected(tr("There is no program vorq-gateway beside vorq."));
    return {};
}

QStringList LinuxBackendAtLogin::arguments() const {
    QStringList words{serve};
    const auto address = LoopbackAddress::of(m_setting.address);
    if (!address) return words;
    if (address->host() != gatewayHost) words += {u"--host"_s, address->host()};
    if (address->port() != gatewayPort) words += {u"--port"_s, QString::number(address->port())};
    return words;
}

QString LinuxBackendAtLogin::entryPath() const {
    return m_setting.configurationFolder + u"/autostart/com.vorq.gateway.desktop"_s;
}

// Desktops switch an entry off by a line of their own.
bool LinuxBackendAtLogin::isInEntry() const {
    QFile entry(entryPath());
    if (!entry.open(QIODevice::ReadOnly)) return false;
    const QList<QByteArray> lines = entry.readAll().split('\n');
    return !lines.contains("Hidden=true") && !lines.contains("X-GNOME-Autostart-enabled=false");
}

bool LinuxBackendAtLogin::isOn() const {
    return isInEntry() || m_unit.isEnabled();
}

BackendAtLogin::Outcome LinuxBackendAtLogin::writeEntry() const {
    const QString text = u"[Desktop Entry]\n"
                         "Type=Application\n"
                         "Name=Vorq Local Backend\n"
                         "Comment=Answers Vorq on this computer\n"
                         "Icon=com.vorq.desk\n"
                         "Exec=%1 %2\n"
                         "Terminal=false\n"
                         "NoDisplay=true\n"
                         "X-GNOME-Autostart-enabled=true\n"_s.arg(
                             desktopExecWord(m_setting.gateway), arguments().join(u' '));
    QDir().mkpath(QFileInfo(entryPath()).path());
    const FileOutcome written = replaceFile(entryPath(), text.toUtf8(), sharedFile);
    if (written) return {};
    return std::unexpected(tr("Could not write %1: %2").arg(entryPath(), written.error()));
}

BackendAtLogin::Outcome LinuxBackendAtLogin::removeEntry() const {
    QFile entry(entryPath());
    if (!entry.exists() || entry.remove()) return {};
    return std::unexpected(tr("Could not remove %1: %2").arg(entryPath(), entry.errorString()));
}

// Not both, or there would be two.
BackendAtLogin::Outcome LinuxBackendAtLogin::switchOn() {
    if (Outcome outcome = supported(); !outcome) return outcome;
    const bool isUnit = arguments() == QStringList{serve} && m_unit.isKnown() && m_unit.enable();
    if (!isUnit) (void)m_unit.disable();
    Outcome entry = isUnit ? removeEntry() : writeEntry();
    if (!entry || answers()) return entry;
    return startNow();
}

BackendAtLogin::Outcome LinuxBackendAtLogin::switchOff() {
    if (!m_unit.disable())
        return std::unexpected(tr("Could not disable the unit vorq-gateway.service."));
    return removeEntry();
}

BackendAtLogin::Outcome LinuxBackendAtLogin::remove() {
    if (m_unit.isEnabled()) (void)m_unit.stop();
    if (QFile::exists(entryPath()) && !m_setting.gateway.isEmpty())
        endUserProcesses({m_setting.gateway, serve});
    return switchOff();
}

bool LinuxBackendAtLogin::answers() const {
    const auto address = LoopbackAddress::of(m_setting.address);
    return address && address->accepts();
}

BackendAtLogin::Outcome LinuxBackendAtLogin::startNow() const {
    if (!m_unit.isEnabled() || !m_unit.start()) {
        QProcess gateway;
        gateway.setProgram(m_setting.gateway);
        gateway.setArguments(arguments());
        gateway.setWorkingDirectory(QDir::homePath());
        for (const auto set : {&QProcess::setStandardOutputFile, &QProcess::setStandardErrorFile})
            (gateway.*set)(QProcess::nullDevice(), QIODevice::Truncate);
        gateway.setStandardInputFile(QProcess::nullDevice());
        gateway.startDetached();
    }
    QDeadlineTimer limit(m_setting.startLimit);
    while (!answers()) {
        if (limit.hasExpired())
            return std::unexpected(
                tr("It starts at login from now on, but does not answer now. To see why, run in a "
                   "terminal: vorq-gateway %1")
                    .arg(arguments().join(u' ')));
        QThread::msleep(pollInterval);
    }
    return {};
}

} // namespace vorq
