#include "doubles/wayland/GnomeCompositor.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QThread>

#include <linux/input-event-codes.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

constexpr const char* busConnection = "gnome-compositor";
constexpr const char* remoteDesktop = "org.gnome.Mutter.RemoteDesktop";
constexpr int callLimit = 10000; // milliseconds
const QString keysSchema = u"org.gnome.settings-daemon.plugins.media-keys"_s;

// The windows of a process, that with the keyboard before the others.
QString windowsOf(std::int32_t process) {
    return u"global.get_window_actors().map(a => a.meta_window)"
           ".filter(w => w.get_pid() === %1)"
           ".sort((a, b) => b.has_focus() - a.has_focus())"_s.arg(process);
}

// What a remote desktop plays for somebody who sits elsewhere. It ends with the connection.
class GnomeSeat final : public VirtualSeat {
  public:
    using PointerPlace = std::function<QPoint()>;

    GnomeSeat(QDBusConnection bus, PointerPlace pointerPlace)
        : m_bus(std::move(bus)), m_pointerPlace(std::move(pointerPlace)) {
        const QDBusMessage session = m_bus.call(
            QDBusMessage::createMethodCall(remoteDesktop, "/org/gnome/Mutter/RemoteDesktop",
                                           remoteDesktop, "CreateSession"),
            QDBus::Block, callLimit);
        m_path = session.arguments().value(0).value<QDBusObjectPath>().path();
        if (m_path.isEmpty())
            throw std::runtime_error("GNOME lets nobody play its keyboard and pointer: " +
                                     session.errorMessage().toStdString());
        tell("Start", {});
    }

    void key(unsigned code, bool isDown) override { tell("NotifyKeyboardKeycode", {code, isDown}); }
    void moveTo(QPoint at) override {
        const QPoint way = at - m_pointerPlace();
        tell("NotifyPointerMotionRelative", {double(way.x()), double(way.y())});
    }
    void button(bool isDown) override { tell("NotifyPointerButton", {int(BTN_LEFT), isDown}); }

  private:
    // The shell deals with it a moment after its answer.
    void tell(const char* method, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            remoteDesktop, m_path, QString::fromLatin1(remoteDesktop) + ".Session",
            QString::fromLatin1(method));
        message.setArguments(arguments);
        const QDBusMessage answer = m_bus.call(message, QDBus::Block, callLimit);
        if (answer.type() != QDBusMessage::ReplyMessage)
            throw std::runtime_error("GNOME refuses a key or a movement: " +
                                     answer.errorMessage().toStdString());
        QThread::msleep(20);
    }

    QDBusConnection m_bus;
    PointerPlace m_pointerPlace;
    QString m_path;
};

} // namespace

// Nothing here needs what a system's bus offers, but the shell does not start without any.
GnomeCompositor::GnomeCompositor(DesktopSession& session, QSize screen)
    : m_session(session),
      m_bus(QDBusConnection::connectToBus(session.busAddress(), busConnection)) {
    m_variables.insert("XDG_CURRENT_DESKTOP", "GNOME");
    m_variables.insert("DBUS_SYSTEM_BUS_ADDRESS", session.busAddress());
    DesktopProgram& shell = session.start(
        "gnome-shell", "gnome-shell",
        {"--wayland", "--headless", "--unsafe-mode", "--virtual-monitor",
         u"%1x%2"_s.arg(screen.width()).arg(screen.height()), "--wayland-display", "wayland-0"},
        m_variables);
    try {
        DesktopSession::waitUntil(
            "gnome-shell to come up", [this] { return isAtRest(); }, std::chrono::seconds(60));
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(error.what() + ("; it says: " + shell.output()).toStdString());
    }
    m_variables.insert("WAYLAND_DISPLAY", "wayland-0");
    for (const char* name : {"DISPLAY", "XAUTHORITY"})
        m_variables.insert(
            QString::fromLatin1(name),
            ask(u"imports.gi.GLib.getenv('%1')"_s.arg(QString::fromLatin1(name))).toString());
    m_seat = std::make_unique<GnomeSeat>(m_bus, [this] {
        const QJsonArray place = ask("global.get_pointer()").toArray();
        return QPoint(place.at(0).toInt(), place.at(1).toInt());
    });
}

GnomeCompositor::~GnomeCompositor() {
    m_seat.reset();
    QDBusConnection::disconnectFromBus(busConnection);
}

// It comes up with an overview of its windows.
bool GnomeCompositor::isAtRest() const {
    return ask("(Main.overview.hide(), Main.actionMode === imports.gi.Shell.ActionMode.NORMAL)")
        .toBool();
}

QJsonValue GnomeCompositor::ask(const QString& expression) const {
    QDBusMessage message = QDBusMessage::createMethodCall("org.gnome.Shell", "/org/gnome/Shell",
                                                          "org.gnome.Shell", "Eval");
    message.setArguments({expression});
    const QVariantList answer = m_bus.call(message, QDBus::Block, callLimit).arguments();
    if (answer.size() != 2 || !answer[0].toBool()) return QJsonValue::Undefined;
    const QByteArray list = '[' + answer[1].toString().toUtf8() + ']';
    return QJsonDocument::fromJson(list).array().at(0);
}

QRect GnomeCompositor::windowOf(std::int32_t process) {
    const QJsonArray place = ask(windowsOf(process) + ".map(w => w.get_frame_rect())"
                                                      ".map(r => [r.x, r.y, r.width, r.height])[0]")
                                 .toArray();
    if (place.size() != 4) return {};
    return {place[0].toInt(), place[1].toInt(), place[2].toInt(), place[3].toInt()};
}

bool GnomeCompositor::isInFront(std::int32_t process) {
    return ask(windowsOf(process) + ".some(w => w.has_focus())").toBool();
}

void GnomeCompositor::set(const QString& schema, const QString& key, const QString& value) const {
    run("gsettings", "libglib2.0-bin", {"set", schema, key, value}, m_session.environment());
}

// As Settings writes it for a person who adds a shortcut.
void GnomeCompositor::bind(QChar letter, const QString& command) {
    constexpr unsigned firstKeyOfX = 8;
    constexpr unsigned superAndShift = 0x41;
    const QString path =
        u"/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/%1/"_s.arg(letter);
    const QString schema = keysSchema + ".custom-keybinding:" + path;
    set(schema, "name", command);
    set(schema, "binding", u"<Super><Shift>%1"_s.arg(letter));
    set(schema, "command", command);
    m_bound += "'" + path + "'";
    set(keysSchema, "custom-keybindings", "[" + m_bound.join(", ") + "]");
    if (m_shortcuts == nullptr)
        m_shortcuts = &m_session.start("/usr/libexec/gsd-media-keys", "gnome-settings-daemon");
    const QString action = u"global.display.get_keybinding_action(%1, %2)"_s
                               .arg(VirtualSeat::codeOf(letter) + firstKeyOfX)
                               .arg(superAndShift);
    DesktopSession::waitUntil("the shortcut", [&] { return ask(action).toInt() > 0; });
}

} // namespace vorq::desktop
