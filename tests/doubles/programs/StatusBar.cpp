// A bar along the lower edge that shows status items by D-Bus and draws their menus itself: the
// icon of the item at its left end, at a click on which the menu of the item comes up. It tells the
// item of the end of the menu if the argument is "tells". A second argument is for how many
// milliseconds it is busy before it asks for the menu. It writes what it does: "bar", "item", and
// for each entry of a menu that comes up "entry X Y NAME", with its place on the screen, and "menu"
// behind them.

#include <QApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusInterface>
#include <QDBusMetaType>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <QDBusVariant>
#include <QImage>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QTextStream>
#include <QTimer>
#include <QWidget>
#include <QtEndian>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int barHeight = 40;
constexpr int iconSize = 22;

// An entry of a menu with those below it, as com.canonical.dbusmenu describes it.
struct Entry {
    int id = 0;
    QVariantMap properties;
    QList<QVariant> children;
};

const QDBusArgument& operator>>(const QDBusArgument& argument, Entry& entry) {
    argument.beginStructure();
    argument >> entry.id >> entry.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        entry.children += child.variant();
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

// A picture of an icon, whose pixels come in the order of the network.
struct Pixels {
    int width = 0;
    int height = 0;
    QByteArray bytes;
};

const QDBusArgument& operator>>(const QDBusArgument& argument, Pixels& pixels) {
    argument.beginStructure();
    argument >> pixels.width >> pixels.height >> pixels.bytes;
    argument.endStructure();
    return argument;
}

QImage imageOf(const Pixels& pixels) {
    QImage image(pixels.width, pixels.height, QImage::Format_ARGB32);
    if (pixels.bytes.size() != image.sizeInBytes()) return {};
    for (int y = 0; y < pixels.height; ++y)
        for (int x = 0; x < pixels.width; ++x) {
            const qsizetype at = (qsizetype{y} * pixels.width + x) * 4;
            image.setPixel(x, y, qFromBigEndian<quint32>(pixels.bytes.constData() + at));
        }
    return image;
}

QImage iconIn(const QVariant& property) {
    QImage best;
    const auto argument = property.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        Pixels pixels;
        argument >> pixels;
        if (best.isNull() || pixels.width == iconSize) best = imageOf(pixels);
    }
    argument.endArray();
    return best;
}

class Bar final : public QWidget {
  public:
    Bar(bool tellsOfEnds, int delay) : m_tellsOfEnds(tellsOfEnds), m_delay(delay) {
        becomeDock();
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        setGeometry(0, screen.height() - barHeight, screen.width(), barHeight);
    }

    void setItem(const QString& service) { m_service = service; }

    void fetchIcon() {
        QDBusMessage question = QDBusMessage::createMethodCall(
            m_service, u"/StatusNotifierItem"_s, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
        question << u"org.kde.StatusNotifierItem"_s << u"IconPixmap"_s;
        auto* answer =
            new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
        connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
            const QDBusPendingReply<QDBusVariant> icon = *answer;
            if (icon.isValid()) m_icon = iconIn(icon.value().variant());
            answer->deleteLater();
            update();
        });
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        constexpr int edge = (barHeight - iconSize) / 2;
        QPainter(this).drawImage(QRect(edge, edge, iconSize, iconSize), m_icon);
    }
    void mousePressEvent(QMouseEvent* event) override {
        if (event->position().x() > barHeight || m_service.isEmpty()) return;
        QTimer::singleShot(m_delay, this, [this] { showMenu(); });
    }

  private:
    void showMenu() {
        const QDBusInterface item(m_service, u"/StatusNotifierItem"_s,
                                  u"org.kde.StatusNotifierItem"_s);
        const QString path = item.property("Menu").value<QDBusObjectPath>().path();
        m_source = std::make_unique<QDBusInterface>(m_service, path, u"com.canonical.dbusmenu"_s);
        m_source->call(u"AboutToShow"_s, 0);
        const QDBusMessage layout = m_source->call(u"GetLayout"_s, 0, -1, QStringList());
        m_menu.clear();
        fill(m_menu, qdbus_cast<Entry>(layout.arguments().value(1)));
        m_menu.popup(QPoint(2, geometry().top() - m_menu.sizeHint().height()));
    }

    // Before it is shown. The attribute of Qt for it does nothing.
    void becomeDock() {
        xcb_connection_t* x11 =
            qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
        const auto atom = [x11](const QByteArray& name) {
            const auto asked = xcb_intern_atom(x11, 0, static_cast<uint16_t>(name.size()), name);
            const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> answer(
                xcb_intern_atom_reply(x11, asked, nullptr), &std::free);
            return answer ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
        };
        const xcb_atom_t dock = atom("_NET_WM_WINDOW_TYPE_DOCK");
        xcb_change_property(x11, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(winId()),
                            atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &dock);
    }

    static void tellPlaces(const QMenu& menu) {
        QTextStream out(stdout);
        for (QAction* action : menu.actions()) {
            const QPoint at = menu.mapToGlobal(menu.actionGeometry(action).center());
            out << "entry " << at.x() << ' ' << at.y() << ' ' << action->text() << '\n';
        }
        out << "menu\n";
    }

    void fill(QMenu& menu, const Entry& entry) {
        connect(
            &menu, &QMenu::aboutToShow, this, [&menu] { tellPlaces(menu); },
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
        for (const QVariant& each : entry.children) {
            const auto child = qdbus_cast<Entry>(each);
            const QString text = child.properties.value(u"label"_s).toString();
            const QVariant visible = child.properties.value(u"visible"_s, true);
            if (!visible.toBool() || text.isEmpty()) continue;
            if (child.children.isEmpty()) {
                connect(menu.addAction(text), &QAction::triggered, this,
                        [this, id = child.id] { tell(id, u"clicked"_s); });
            } else {
                fill(*menu.addMenu(text), child);
            }
        }
        if (&menu == &m_menu && m_tellsOfEnds)
            connect(
                &menu, &QMenu::aboutToHide, this, [this] { tell(0, u"closed"_s); },
                Qt::SingleShotConnection);
    }

    void tell(int id, const QString& event) {
        m_source->asyncCall(u"Event"_s, id, event, QVariant::fromValue(QDBusVariant(0)), 0U);
    }

    bool m_tellsOfEnds;
    int m_delay; // in milliseconds
    QString m_service;
    std::unique_ptr<QDBusInterface> m_source;
    QMenu m_menu;
    QImage m_icon;
};

class Watcher final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(int ProtocolVersion READ version)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)

  public:
    explicit Watcher(Bar& bar) : m_bar(bar) {}

    [[nodiscard]] bool hasHost() const { return true; }
    [[nodiscard]] int version() const { return 0; }
    [[nodiscard]] QStringList items() const { return m_items; }

  public slots:
    void RegisterStatusNotifierItem(const QString& service) {
        const QString name = service.startsWith(u'/') ? message().service() : service;
        m_items += name;
        m_bar.setItem(name);
        m_bar.fetchIcon();
        QDBusConnection::sessionBus().connect(name, u"/StatusNotifierItem"_s,
                                              u"org.kde.StatusNotifierItem"_s, u"NewIcon"_s, this,
                                              SLOT(fetchIcon()));
        QTextStream(stdout) << "item " << name << "\n" << Qt::flush;
    }
    void RegisterStatusNotifierHost(const QString&) {}

  private slots:
    void fetchIcon() { m_bar.fetchIcon(); }

  private:
    Bar& m_bar;
    QStringList m_items;
};

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    Bar bar(arguments.value(1) == u"tells", arguments.value(2).toInt());
    Watcher watcher(bar);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.registerObject(u"/StatusNotifierWatcher"_s, &watcher,
                            QDBusConnection::ExportAllSlots |
                                QDBusConnection::ExportAllProperties) ||
        !bus.registerService(u"org.kde.StatusNotifierWatcher"_s))
        return 1;
    bar.show();
    QTextStream(stdout) << "bar\n" << Qt::flush;
    return QApplication::exec();
}

#include "StatusBar.moc"
