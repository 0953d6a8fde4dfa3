#include "shell/settings/SettingsWindow.h"

#include "platform/Defaults.h"
#include "platform/OverlayHints.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>

namespace vorq {
namespace {

constexpr QSize usualSize(1120, 800);
constexpr QSize leastSize(420, 360);

QList<QRect> availableScreens() {
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens += screen->availableGeometry();
    return screens;
}

} // namespace

SettingsWindow::SettingsWindow(const Platform& platform, QQmlEngine* engine)
    : QQuickView(engine, nullptr), m_platform(platform) {
    setTitle(tr("Settings")); // the toolkit adds the name of the program
    setResizeMode(SizeRootObjectToView);
    setMinimumSize(leastSize);
}

SettingsWindow::~SettingsWindow() {
    keepPlace();
}

void SettingsWindow::present() {
    if (!isVisible()) restorePlace();
    if (windowStates().testFlag(Qt::WindowMinimized))
        setWindowStates(windowStates() & ~Qt::WindowMinimized);
    show();
    raise();
    m_platform.hints.takeFocus(winId());
    requestActivate();
}

// A window manager keeps its title within the screen by itself; the screen may be gone, though.
void SettingsWindow::restorePlace() {
    const QList<QRect> screens = availableScreens();
    const auto stored = decodePlace(m_platform.defaults.string(placeKey).value_or(QString()));
    if (stored)
        setGeometry(reachableFrame(stored->frame, screens));
    else if (!screens.isEmpty())
        setGeometry(centredFrame(usualSize, screens.front()));
    if (stored && stored->isMaximised) setWindowStates(Qt::WindowMaximized);
    m_place = stored.value_or(WindowPlace{geometry()});
}

void SettingsWindow::notePlace() {
    if (!m_place || !isVisible()) return;
    m_place->isMaximised = windowStates().testFlag(Qt::WindowMaximized);
    if (windowStates() == Qt::WindowNoState) m_place->frame = geometry();
}

void SettingsWindow::keepPlace() {
    if (m_place) m_platform.defaults.keepString(placeKey, encodePlace(*m_place));
}

bool SettingsWindow::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::Close:
        // Something on it may have to be saved first.
        event->ignore();
        emit closeAsked();
        return true;
    case QEvent::WindowStateChange:
        notePlace();
        break;
    case QEvent::Hide:
        keepPlace();
        break;
    default:
        break;
    }
    return QQuickView::event(event);
}

void SettingsWindow::resizeEvent(QResizeEvent* event) {
    QQuickView::resizeEvent(event);
    notePlace();
}

void SettingsWindow::moveEvent(QMoveEvent* event) {
    QQuickView::moveEvent(event);
    notePlace();
}

void SettingsWindow::focusInEvent(QFocusEvent* event) {
    QQuickView::focusInEvent(event);
    emit activated();
}

} // namespace vorq
