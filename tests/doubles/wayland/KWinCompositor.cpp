#include "doubles/wayland/KWinCompositor.h"

#include "doubles/wayland/WaylandClient.h"

#include <QDir>
#include <QStandardPaths>

#include <array>
#include <linux/input-event-codes.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

const QString kwin = u"org.kde.KWin"_s;
constexpr std::string_view mostMemory = "--data=3000000000";

// Requests as they stand on the wire: 0 authenticate, 2 button, 9 absolute motion, 10 key.
const std::array<wl_message, 11> inputRequests{{{"authenticate", "ss", nullptr},
                                                {"pointer_motion", "ff", nullptr},
                                                {"button", "uu", nullptr},
                                                {"axis", "uf", nullptr},
                                                {"touch_down", "2uff", nullptr},
                                                {"touch_motion", "2uff", nullptr},
                                                {"touch_up", "2u", nullptr},
                                                {"touch_cancel", "2", nullptr},
                                                {"touch_frame", "2", nullptr},
                                                {"pointer_motion_absolute", "3ff", nullptr},
                                                {"keyboard_key", "4uu", nullptr}}};
const wl_interface inputInterface{"org_kde_kwin_fake_input", 4, 11,
                                  inputRequests.data(),      0, nullptr};

class KWinSeat final : public VirtualSeat {
  public:
    explicit KWinSeat(const QString& socket)
        : m_client(socket), m_input(m_client.bind(inputInterface, 4)) {
        if (m_input == nullptr)
            throw std::runtime_error("kwin lets nobody play its keyboard and pointer");
        WaylandClient::send(m_input, 0, "test", "test");
        m_client.settle();
    }

    void key(unsigned code, bool isDown) override {
        WaylandClient::send(m_input, 10, code, isDown ? 1U : 0U);
        m_client.settle();
    }
    void moveTo(QPoint at) override {
        WaylandClient::send(m_input, 9, wl_fixed_from_int(at.x()), wl_fixed_from_int(at.y()));
        m_client.settle();
    }
    void button(bool isDown) override {
        const unsigned code = BTN_LEFT;
        WaylandClient::send(m_input, 2, code, isDown ? 1U : 0U);
        m_client.settle();
    }

  private:
    WaylandClient m_client;
    wl_proxy* m_input;
};

} // namespace

KWinCompositor::KWinCompositor(DesktopSession& session, QSize screen) : m_session(session) {
    // A container may have dropped the capability that the installed file asks for; a copy has
    // none.
    const QString installed = QStandardPaths::findExecutable("kwin_wayland");
    if (installed.isEmpty())
        throw std::runtime_error("no program kwin_wayland: install the package kwin-wayland");
    const QString program = session.home() + "/kwin_wayland";
    QFile::copy(installed, program);
    m_variables.insert("XDG_CURRENT_DESKTOP", "KDE");
    QProcessEnvironment environment(m_variables);
    environment.insert("KWIN_COMPOSE", "O2");
    environment.insert("KWIN_WAYLAND_NO_PERMISSION_CHECKS", "1");
    environment.insert("QT_QPA_PLATFORM", "wayland");
    environment.insert("QT_LOGGING_RULES", "kwin_scripting.debug=true;js.debug=true");
    environment.insert("QT_FORCE_STDERR_LOGGING", "1");
    // It starts this once it has its X server.
    const QString variables = session.home() + "/run/kwin.variables";
    const QString teller = session.write("kwin-started", "#!/bin/sh\nenv > " + variables.toUtf8() +
                                                             ".part\nmv " + variables.toUtf8() +
                                                             ".part " + variables.toUtf8() + "\n");
    QFile::setPermissions(teller, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_program = &session.start("prlimit", "util-linux",
                               {QString::fromLatin1(mostMemory.data()), program, "--virtual",
                                "--width", QString::number(screen.width()), "--height",
                                QString::number(screen.height()), "--xwayland", "--socket",
                                "wayland-0", "--no-lockscreen", teller},
                               environment);
    const QString socket = session.home() + "/run/wayland-0";
    DesktopSession::waitUntil("kwin to come up", [&] { return QFile::exists(socket); });
    m_variables.insert("WAYLAND_DISPLAY", "wayland-0");
    QFile told(variables);
    DesktopSession::waitUntil("the X server of kwin", [&] { return told.exists(); });
    if (!told.open(QIODevice::ReadOnly)) throw std::runtime_error("kwin tells of no X server");
    for (const QByteArray& line : told.readAll().split('\n'))
        for (const char* name : {"DISPLAY", "XAUTHORITY"})
            if (line.startsWith(QByteArray(name) + '='))
                m_variables.insert(QString::fromLatin1(name),
                                   QString::fromUtf8(line.mid(line.indexOf('=') + 1)));
    m_seat = std::make_unique<KWinSeat>(socket);
}

KWinCompositor::~KWinCompositor() = default;

QByteArray KWinCompositor::tell(const QString& service, const QString& path, const QString& method,
                                const QStringList& arguments) const {
    return run("gdbus", "libglib2.0-bin",
               QStringList{"call", "--session", "-d", service, "-o", path, "-m", method} +
                   arguments,
               m_session.environment());
}

// A script that writes into the log of kwin.
KWinCompositor::Window KWinCompositor::find(std::int32_t process) {
    const QByteArray mark = "vorq-question-" + QByteArray::number(++m_questions) + " ";
    const QByteArray script =
        "workspace.clientList().forEach(function(c) { print('" + mark +
        "' + [c.pid, c.active ? 1 : 0, c.x, c.y, c.width, c.height].join(' ')); });\nprint('" +
        mark + "end');\n";
    const QString file = m_session.write("question.js", script);
    const QString name = QString::fromLatin1(mark.trimmed());
    QByteArray number = tell(kwin, "/Scripting", "org.kde.kwin.Scripting.loadScript", {file, name});
    number = number.mid(1, number.indexOf(',') - 1);
    tell(kwin, "/" + QString::fromLatin1(number), "org.kde.kwin.Script.run", {});
    DesktopSession::waitUntil("kwin to tell of its windows",
                              [&] { return m_program->output().contains(mark + "end"); });
    tell(kwin, "/Scripting", "org.kde.kwin.Scripting.unloadScript", {name});
    Window found;
    for (const QByteArray& line : m_program->output().split('\n')) {
        const qsizetype at = line.indexOf(mark);
        const QList<QByteArray> told =
            at < 0 ? QList<QByteArray>() : line.mid(at + mark.size()).trimmed().split(' ');
        if (told.size() != 6 || told[0].toInt() != process) continue;
        found = {.place = QRect(told[2].toInt(), told[3].toInt(), told[4].toInt(), told[5].toInt()),
                 .isActive = told[1] == "1"};
    }
    return found;
}

QRect KWinCompositor::windowOf(std::int32_t process) {
    return find(process).place;
}

bool KWinCompositor::isInFront(std::int32_t process) {
    return find(process).isActive;
}

// A program's own entry among the shortcuts, as System Settings adds one for a command.
void KWinCompositor::bind(QChar letter, const QString& command) {
    constexpr int setAtOnce = 2;
    const QString entry = u"shortcut-%1.desktop"_s.arg(letter);
    m_session.write(".local/share/kglobalaccel/" + entry,
                    "[Desktop Entry]\nType=Application\nNoDisplay=true\nName=" + command.toUtf8() +
                        "\nExec=" + command.toUtf8() +
                        "\nX-KDE-GlobalAccel-CommandShortcut=true\n");
    const QString action = u"['%1', '_launch', '%2', '%2']"_s.arg(entry, command);
    const int chord = Qt::META | Qt::SHIFT | letter.toUpper().unicode();
    const QString service = u"org.kde.kglobalaccel"_s;
    const QString shortcuts = u"org.kde.KGlobalAccel."_s;
    tell(service, "/kglobalaccel", shortcuts + "doRegister", {action});
    const QByteArray taken = tell(service, "/kglobalaccel", shortcuts + "setShortcut",
                                  {action, u"[%1]"_s.arg(chord), QString::number(setAtOnce)});
    if (!taken.contains(QByteArray::number(chord)))
        throw std::runtime_error("kwin binds no shortcut: " + taken.toStdString());
}

} // namespace vorq::desktop
