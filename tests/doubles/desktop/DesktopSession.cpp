#include "doubles/desktop/DesktopSession.h"

#include "doubles/wayland/WaylandCompositor.h"
#include "platform/linux/x11/X11Connection.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QRect>
#include <QThread>
#include <QUuid>

#include <array>
#include <csignal>
#include <map>
#include <optional>
#include <stdexcept>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

using std::chrono::seconds;

constexpr const char* markName = "VORQ_DESKTOP_SESSION";

[[noreturn]] void fail(const QString& sentence) {
    throw std::runtime_error(sentence.toStdString());
}

// A bus whose activatable services are in one folder, which may be empty.
QByteArray busConfiguration(const QString& socket, const QString& services) {
    return u"<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration "
           "1.0//EN\" \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">"
           "<busconfig><type>session</type><listen>unix:path=%1</listen>"
           "<auth>EXTERNAL</auth>%2<policy context=\"default\">"
           "<allow send_destination=\"*\" eavesdrop=\"true\"/>"
           "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n"_s
               .arg(socket, services)
               .toUtf8();
}

} // namespace

// The variables of this process while it is part of the session.
class DesktopSession::JoinedEnvironment {
  public:
    explicit JoinedEnvironment(const QProcessEnvironment& environment) {
        for (const char* name : {"DISPLAY", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS",
                                 "XDG_RUNTIME_DIR", "HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
            m_former[name] =
                qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt;
            put(name, environment.contains(name) ? std::optional(environment.value(name).toUtf8())
                                                 : std::nullopt);
        }
    }
    JoinedEnvironment(const JoinedEnvironment&) = delete;
    JoinedEnvironment& operator=(const JoinedEnvironment&) = delete;
    ~JoinedEnvironment() {
        for (const auto& [name, value] : m_former)
            put(name.constData(), value);
    }

  private:
    static void put(const char* name, const std::optional<QByteArray>& value) {
        if (value)
            qputenv(name, *value);
        else
            qunsetenv(name);
    }

    std::map<QByteArray, std::optional<QByteArray>> m_former;
};

DesktopSession::DesktopSession(const SessionOptions& options)
    : m_home(QDir::tempPath() + u"/vorq-desktop-XXXXXX"_s),
      m_mark(QUuid::createUuid().toByteArray(QUuid::WithoutBraces)),
      m_environment(QProcessEnvironment::systemEnvironment()) {
    for (const char* name :
         {"DISPLAY", "XAUTHORITY", "WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "XDG_CONFIG_HOME",
          "XDG_DATA_HOME", "XDG_CACHE_HOME", "AT_SPI_BUS_ADDRESS", "QT_QPA_PLATFORM",
          "QT_ACCESSIBILITY", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "GNOME_ACCESSIBILITY"})
        m_environment.remove(QString::fromLatin1(name));
    m_environment.insert(QString::fromLatin1(markName), QString::fromLatin1(m_mark));
    m_environment.insert("HOME", home());
    m_environment.insert("XDG_RUNTIME_DIR", home() + "/run");
    m_environment.insert("XDG_SESSION_TYPE", "x11");
    m_environment.insert("LANG", "C.UTF-8");
    m_environment.insert("LIBGL_ALWAYS_SOFTWARE", "1");
    QDir().mkpath(home() + "/run");
    QFile::setPermissions(home() + "/run", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (options.type == SessionType::Openbox)
        startOpenboxDesktop(options);
    else
        startWaylandDesktop(options);
}

void DesktopSession::startOpenboxDesktop(const SessionOptions& options) {
    startDisplay(options.screen);
    startBus(options.hasAccessibilityBus);
    m_joined = std::make_unique<JoinedEnvironment>(m_environment);
    m_x11 = std::make_unique<X11Connection>();
    if (options.hasAccessibilityBus && options.isAccessibilityOn) switchAccessibility(true);
    start("openbox", "openbox");
    waitUntil("the window manager to come up", [this] {
        return !m_x11->numbers(m_x11->root(), m_x11->atom("_NET_SUPPORTING_WM_CHECK")).empty();
    });
}

// Applications find the compositor by the environment, and so does what the bus starts.
void DesktopSession::startWaylandDesktop(const SessionOptions& options) {
    m_environment.insert("XDG_SESSION_TYPE", "wayland");
    startBus(options.hasAccessibilityBus);
    m_compositor = WaylandCompositor::start(options.type, *this, options.screen);
    m_environment.insert(m_compositor->environment());
    m_display = m_environment.value("DISPLAY");
    run("dbus-update-activation-environment", "dbus-bin",
        QStringList{"XDG_SESSION_TYPE"} + m_compositor->environment().keys(), m_environment);
    m_joined = std::make_unique<JoinedEnvironment>(m_environment);
    waitUntil("the X server of the compositor, which the package xwayland brings", [this] {
        m_x11 = std::make_unique<X11Connection>();
        return m_x11->isUsable();
    });
    if (options.hasAccessibilityBus && options.isAccessibilityOn) switchAccessibility(true);
}

WaylandCompositor& DesktopSession::compositor() const {
    if (!m_compositor) fail("this is no Wayland session");
    return *m_compositor;
}

DesktopSession::~DesktopSession() {
    m_compositor.reset();
    m_x11.reset();
    killAll();
    m_programs.clear();
    // What is dying may still write.
    for (int round = 0; round < 50 && !m_home.remove(); ++round)
        QThread::msleep(20);
}

QString DesktopSession::busAddress() const {
    return m_environment.value("DBUS_SESSION_BUS_ADDRESS");
}

// The server itself looks for a number that is free, and says it on a pipe.
void DesktopSession::startDisplay(QSize screen) {
    std::array<int, 2> pipe{};
    if (::pipe(pipe.data()) != 0) fail("no pipe for the X server");
    const QString size = u"%1x%2x24"_s.arg(screen.width()).arg(screen.height());
    start("Xvfb", "xvfb",
          {"-displayfd", QString::number(pipe[1]), "-screen", "0", size, "-nolisten", "tcp",
           "-noreset"});
    ::close(pipe[1]);
    QFile answer;
    if (!answer.open(pipe[0], QIODevice::ReadOnly, QFile::AutoCloseHandle)) fail("no X server");
    const QByteArray number = answer.readLine().trimmed();
    if (number.isEmpty()) fail("the X server does not start: " + m_programs.back()->output());
    m_display = ":" + QString::fromLatin1(number);
    m_environment.insert("DISPLAY", m_display);
}

void DesktopSession::startBus(bool withAccessibility) {
    const QString socket = home() + "/run/bus";
    const QString services = withAccessibility ? u"<standard_session_servicedirs/>"_s : QString();
    const QString configuration = write("run/bus.conf", busConfiguration(socket, services));
    m_environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + socket);
    start("dbus-daemon", "dbus", {"--nofork", "--config-file=" + configuration});
    waitUntil("the session bus to come up", [&] { return QFileInfo::exists(socket); });
}

void DesktopSession::switchAccessibility(bool on) {
    const QStringList arguments{"--session",
                                "--print-reply",
                                "--dest=org.a11y.Bus",
                                "/org/a11y/bus",
                                "org.freedesktop.DBus.Properties.Set",
                                "string:org.a11y.Status",
                                "string:IsEnabled",
                                u"variant:boolean:%1"_s.arg(on ? "true" : "false")};
    waitUntil("the accessibility bus of the package at-spi2-core to answer", [&] {
        return run("dbus-send", "dbus-bin", arguments, m_environment).contains("method return");
    });
}

QString DesktopSession::write(const QString& relativePath, const QByteArray& content) const {
    const QString path = home() + "/" + relativePath;
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        fail("cannot write " + path);
    return path;
}

DesktopProgram& DesktopSession::start(const QString& program, const QString& package,
                                      const QStringList& arguments,
                                      const QProcessEnvironment& additional) {
    QProcessEnvironment environment = m_environment;
    environment.insert(additional);
    return *m_programs.emplace_back(
        std::make_unique<DesktopProgram>(program, package, arguments, environment));
}

void DesktopSession::waitUntil(const QString& what, const Condition& isTrue, seconds limit) {
    QElapsedTimer waited;
    waited.start();
    while (!isTrue()) {
        if (waited.elapsed() > std::chrono::milliseconds(limit).count())
            fail(u"waited %1 s in vain for %2"_s.arg(limit.count()).arg(what));
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(10);
    }
}

// Programs may have started others, which are found by the mark in their environment.
// A browser that other programs have started may have wiped its environment to show a title.
bool DesktopSession::isOfSession(const QString& process) const {
    const auto holds = [&process](const QString& file, const QByteArray& text) {
        QFile content(process + file);
        return content.open(QIODevice::ReadOnly) && content.readAll().contains(text);
    };
    return holds("/environ", QByteArray(markName) + "=" + m_mark) ||
           holds("/cmdline", "=" + m_home.path().toUtf8() + "/");
}

void DesktopSession::killAll() const {
    for (int round = 0; round < 20; ++round) {
        bool found = false;
        for (const QString& name : QDir("/proc").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            bool isProcess = false;
            const int process = name.toInt(&isProcess);
            if (!isProcess || process == ::getpid() || !isOfSession("/proc/" + name)) continue;
            found = ::kill(process, SIGKILL) == 0 || found;
        }
        if (!found) return;
        QThread::msleep(10);
    }
}

} // namespace vorq::desktop
