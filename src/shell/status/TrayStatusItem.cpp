#include "shell/status/TrayStatusItem.h"

#include <QApplication>
#include <QCursor>
#include <QScreen>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Below or above the glyph, wherever there is room.
QPoint menuPlace(const QRect& glyph, QSize menu) {
    const QScreen* screen = QGuiApplication::screenAt(glyph.center());
    if (screen == nullptr) return glyph.bottomLeft();
    const bool fitsBelow = glyph.bottom() + menu.height() <= screen->geometry().bottom();
    return fitsBelow ? glyph.bottomLeft() : QPoint(glyph.left(), glyph.top() - menu.height());
}

} // namespace

TrayStatusItem::TrayStatusItem(Clock& clock, QObject* parent)
    : StatusItem(parent), m_flash(clock, [this](StatusImage image) { show(image); }) {
    connect(&m_menu, &QMenu::aboutToShow, this, &StatusItem::menuWillOpen);
    connect(&m_menu, &QMenu::aboutToHide, this, &StatusItem::menuDidClose);
    connect(&m_menu, &StatusMenu::chosen, this, &StatusItem::chosen);
    tellOfChoicesIn(m_menu);
    connect(&m_menu, &StatusMenu::colorEditBegan, this, &StatusItem::colorEditBegan);
    connect(&m_menu, &StatusMenu::colorEditEnded, this, &StatusItem::colorEditEnded);
    connect(&m_icon, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger) openMenu();
            });
}

// A choice closes the menu, also where a bar draws it that does not tell.
void TrayStatusItem::tellOfChoicesIn(const QMenu& menu) {
    connect(&menu, &QMenu::triggered, this, &StatusItem::menuDidClose);
    for (const QAction* action : menu.actions())
        if (action->menu() != nullptr) tellOfChoicesIn(*action->menu());
}

TrayStatusItem::~TrayStatusItem() {
    m_icon.hide();
}

void TrayStatusItem::installStatusItem() {
    show(StatusImage::Glyph);
    m_icon.setToolTip(u"Vorq — ⌘⇧A"_s);
    m_icon.setContextMenu(&m_menu);
    m_icon.show();
    nameForScreenReaders();
}

// The window that stands in the tray where the tray embeds windows.
void TrayStatusItem::nameForScreenReaders() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (!widget->inherits("QSystemTrayIconSys")) continue;
        widget->setWindowTitle(u"Vorq"_s);
        widget->setAccessibleName(u"Vorq"_s);
    }
}

void TrayStatusItem::setHotKeyNotices(const QStringList& notices) {
    m_menu.setHotKeyNotices(notices);
}

bool TrayStatusItem::hasPlace() const {
    return m_icon.isVisible() && !m_icon.geometry().isEmpty();
}

void TrayStatusItem::openMenu() {
    const QPoint place =
        hasPlace() ? menuPlace(m_icon.geometry(), m_menu.sizeHint()) : QCursor::pos();
    m_menu.popup(place);
}

} // namespace vorq
