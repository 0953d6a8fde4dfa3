#include "doubles/wayland/SwayCompositor.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <pwd.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

QByteArray configuration(QSize screen, const QString& variables) {
    return u"output HEADLESS-1 resolution %1x%2 position 0,0\n"
           "default_border pixel 2\n"
           "seat seat0 fallback true\n"
           "exec \"env > %3.part; mv %3.part %3\"\n"_s.arg(screen.width())
               .arg(screen.height())
               .arg(variables)
               .toUtf8();
}

// It refuses to run as root, so it is to take itself for another user: one that has a name on each
// machine, since the X server in it lets in only those whose name it can look up.
QStringList asAnotherUser(const QStringList& command) {
    const passwd* user = ::getpwnam("daemon");
    if (!user) throw std::runtime_error("there is no user daemon to run sway as");
    return QStringList{"unshare", "--user", "--map-user=" + QString::number(user->pw_uid),
                       "--map-group=" + QString::number(user->pw_gid)} +
           command;
}

std::optional<QJsonObject> windowIn(const QJsonObject& node, std::int32_t process) {
    if (node.value("pid").toInt() == process) return node;
    for (const char* list : {"nodes", "floating_nodes"})
        for (const QJsonValue& child : node.value(QString::fromLatin1(list)).toArray())
            if (const auto found = windowIn(child.toObject(), process)) return found;
    return std::nullopt;
}

} // namespace

SwayCompositor::SwayCompositor(DesktopSession& session, QSize screen) : m_session(session) {
    const QString variables = session.home() + "/run/sway.variables";
    const QString file = session.write("sway.conf", configuration(screen, variables));
    QProcessEnvironment environment;
    environment.insert("WLR_BACKENDS", "headless");
    environment.insert("WLR_LIBINPUT_NO_DEVICES", "1");
    environment.insert("WLR_RENDERER", "pixman");
    environment.insert("XDG_CURRENT_DESKTOP", "sway");
    QStringList command{"sway", "-c", file};
    if (::getuid() == 0) command = asAnotherUser(command);
    DesktopProgram& sway = session.start(command.first(), "sway", command.mid(1), environment);
    const auto isReady = [&] { return QFileInfo::exists(variables) || !sway.isRunning(); };
    DesktopSession::waitUntil("sway to come up", isReady);
    QFile told(variables);
    if (!told.open(QIODevice::ReadOnly))
        throw std::runtime_error("sway does not start: " + sway.output().toStdString());
    for (const QByteArray& line : told.readAll().split('\n'))
        for (const char* name : {"WAYLAND_DISPLAY", "DISPLAY", "SWAYSOCK", "XDG_CURRENT_DESKTOP"})
            if (line.startsWith(QByteArray(name) + '='))
                m_variables.insert(QString::fromLatin1(name),
                                   QString::fromUtf8(line.mid(line.indexOf('=') + 1)));
    m_seat = std::make_unique<WlrootsSeat>(
        session.home() + "/run/" + m_variables.value("WAYLAND_DISPLAY"), screen);
}

SwayCompositor::~SwayCompositor() = default;

QByteArray SwayCompositor::tell(const QStringList& message) const {
    return run("swaymsg", "sway", message, m_session.environment());
}

std::optional<QJsonObject> SwayCompositor::find(std::int32_t process) const {
    const QByteArray tree = tell({"-r", "-t", "get_tree"});
    return windowIn(QJsonDocument::fromJson(tree).object(), process);
}

QRect SwayCompositor::windowOf(std::int32_t process) {
    const auto window = find(process);
    if (!window) return {};
    const QJsonObject rect = window->value("rect").toObject();
    return {rect.value("x").toInt(), rect.value("y").toInt(), rect.value("width").toInt(),
            rect.value("height").toInt()};
}

bool SwayCompositor::isInFront(std::int32_t process) {
    const auto window = find(process);
    return window && window->value("focused").toBool();
}

// What sway itself starts may take itself for another user, whom the bus of the session turns away.
// So it only says when, and the command is run beside it.
void SwayCompositor::bind(QChar letter, const QString& command) {
    const QString pipe = m_session.home() + "/run/shortcut-" + letter;
    if (::mkfifo(pipe.toUtf8().constData(), 0600) != 0)
        throw std::runtime_error("no pipe for a shortcut");
    m_session.start("sh", "dash",
                    {"-c", "while read -r _ <&3; do " + command + " & done 3<>" + pipe});
    const QByteArray answer =
        tell({"-r", "--", u"bindsym Mod4+Shift+%1 exec echo >> %2"_s.arg(letter).arg(pipe)});
    if (!answer.contains("\"success\": true"))
        throw std::runtime_error("sway binds no shortcut: " + answer.toStdString());
}

} // namespace vorq::desktop
