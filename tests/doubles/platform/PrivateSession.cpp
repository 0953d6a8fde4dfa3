#include "doubles/platform/PrivateSession.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QUuid>

#include <csignal>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int patience = 20'000; // milliseconds for a server to come up

QByteArray firstLineOf(QProcess& process) {
    QByteArray line;
    while (!line.contains('\n') && process.waitForReadyRead(patience))
        line += process.readAllStandardOutput();
    return line.trimmed();
}

// No server stays behind when the test ends in a crash.
void endWithTest(QProcess& process) {
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

void end(QProcess& process) {
    if (process.state() == QProcess::NotRunning) return;
    process.terminate();
    if (!process.waitForFinished(2000)) {
        process.kill();
        process.waitForFinished();
    }
}

} // namespace

PrivateSession::PrivateSession(Display display, Services services)
    : m_environment(QProcessEnvironment::systemEnvironment()), m_bus(u"none"_s) {
    for (const char* const folder : {"home", "run"})
        QDir().mkpath(m_folder.filePath(QLatin1StringView(folder)));
    QFile::setPermissions(m_folder.filePath("run"),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    for (const char* const variable :
         {"DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "XDG_DATA_HOME", "XDG_CONFIG_HOME",
          "XDG_CACHE_HOME", "XDG_STATE_HOME", "DBUS_SESSION_BUS_ADDRESS"})
        m_environment.remove(QLatin1StringView(variable));
    m_environment.insert("HOME", home());
    m_environment.insert("XDG_RUNTIME_DIR", m_folder.filePath("run"));
    m_environment.insert("GSETTINGS_BACKEND", "memory");
    m_environment.insert("GIO_USE_VFS", "local");
    m_environment.insert("NO_AT_BRIDGE", "1");
    if (display == Display::Virtual) m_problem = startDisplay();
    if (m_problem.isEmpty()) m_problem = startBus(services);
}

PrivateSession::~PrivateSession() {
    const QString name = m_bus.name();
    if (m_bus.isConnected()) {
        for (const QString& owner : m_bus.interface()->registeredServiceNames().value()) {
            const qint64 process = processOf(owner);
            if (process > 0 && process != QCoreApplication::applicationPid() &&
                process != m_daemon.processId())
                ::kill(static_cast<pid_t>(process), SIGKILL);
        }
    }
    m_bus = QDBusConnection(u"none"_s);
    QDBusConnection::disconnectFromBus(name);
    end(m_daemon);
    end(m_display);
}

QString PrivateSession::startDisplay() {
    endWithTest(m_display);
    m_display.setProcessEnvironment(m_environment);
    m_display.setStandardErrorFile(QProcess::nullDevice());
    m_display.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1280x900x24", "-nolisten", "tcp"});
    const QByteArray number = firstLineOf(m_display);
    if (number.isEmpty()) return "Xvfb does not start: install the package xvfb";
    m_environment.insert("DISPLAY", ":" + QString::fromLatin1(number));
    return {};
}

// A bus that knows of no service.
QString PrivateSession::withoutServices() const {
    const QString path = m_folder.filePath("bus.conf");
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write("<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen>"
                   "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
                   "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>");
    return path;
}

QString PrivateSession::startBus(Services services) {
    endWithTest(m_daemon);
    m_daemon.setProcessEnvironment(m_environment);
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    QStringList arguments{"--nofork", "--print-address=1"};
    arguments +=
        services == Services::Installed ? u"--session"_s : "--config-file=" + withoutServices();
    m_daemon.start("dbus-daemon", arguments);
    const QByteArray address = firstLineOf(m_daemon);
    if (address.isEmpty()) return "dbus-daemon does not start: install the package dbus";
    m_bus =
        QDBusConnection::connectToBus(QString::fromLatin1(address), QUuid::createUuid().toString());
    return m_bus.isConnected() ? QString() : "no connection to the private session bus";
}

qint64 PrivateSession::processOf(const QString& name) const {
    const QDBusReply<uint> process = m_bus.interface()->servicePid(name);
    return process.isValid() ? qint64{process.value()} : 0;
}

} // namespace vorq
