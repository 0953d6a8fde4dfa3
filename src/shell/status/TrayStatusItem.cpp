#include "shell/status/TrayStatusItem.h"

#include "platform/tray/TrayHost.h"

#include <QApplication>
#include <QCursor>
#include <QScreen>
#include <QWidget>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int pulses = 2;

// Below or above the glyph, wherever there is room.
QPoint menuPlace(const QRect& glyph, QSize menu) {
    const QScreen* screen = QGuiApplication::screenAt(glyph.center());
    if (screen == nullptr) return glyph.bottomLeft();
    const bool fitsBelow = glyph.bottom() + menu.height() <= screen->geometry().bottom();
    return fitsBelow ? glyph.bottomLeft() : QPoint(glyph.left(), glyph.top() - menu.height());
}

// The window that stands in the tray, where the tray embeds windows.
QWidget* embeddedWindow() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->inherits("QSystemTrayIconSys")) return widget;
    return nullptr;
}

} // namespace

TrayStatusItem::TrayStatusItem(Clock& clock, TrayHost& host, QObject* parent)
    : StatusItem(parent),
      m_host(host),
      m_chime(clock, m_menu),
      m_flash(clock, [this](StatusImage image) { show({.image = image}); }),
      m_attention(clock, {[this](const StatusFrame& frame) { show(frame); },
                          [this] { return isInTray(); }}),
      m_pulse(clock,
              {[this](const StatusFrame& frame) { show(frame); }, [this] { return isInTray(); }}) {
    connect(&m_menu, &QMenu::aboutToShow, this, &StatusItem::menuWillOpen);
    connect(&m_menu, &QMenu::aboutToHide, this, &StatusItem::menuDidClose);
    connect(&m_menu, &StatusMenu::chosen, this, &StatusItem::chosen);
    tellOfChoicesIn(m_menu);
    connect(&m_menu, &StatusMenu::colorEditBegan, this, &StatusItem::colorEditBegan);
    connect(&m_menu, &StatusMenu::colorEditEnded, this, &StatusItem::colorEditEnded);
}

// A choice closes the menu, also where a bar draws it that does not tell.
void TrayStatusItem::tellOfChoicesIn(const QMenu& menu) {
    connect(&menu, &QMenu::triggered, this, &StatusItem::menuDidClose);
    for (const QAction* action : menu.actions())
        if (action->menu() != nullptr) tellOfChoicesIn(*action->menu());
}

TrayStatusItem::~TrayStatusItem() = default;

void TrayStatusItem::installStatusItem() {
    show({});
    connect(&m_host, &TrayHost::arrived, this, &TrayStatusItem::enterTray);
    enterTray();
}

// Asked for an icon, or whether there is a tray, the toolkit looks for one that hears of items by
// the bus, and without one never does so again. So it is asked for nothing before there is a tray.
void TrayStatusItem::enterTray() {
    if (!m_icon && m_host.supported()) makeIcon();
}

void TrayStatusItem::makeIcon() {
    m_icon = std::make_unique<QSystemTrayIcon>();
    connect(m_icon.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger) openMenu();
            });
    m_icon->setIcon(m_image);
    m_icon->setToolTip(u"Vorq — ⌘⇧A"_s);
    m_icon->setContextMenu(&m_menu);
    m_icon->show();
    QWidget* window = embeddedWindow();
    if (window == nullptr) return;
    window->setWindowTitle(u"Vorq"_s);
    window->setAccessibleName(u"Vorq"_s);
}

void TrayStatusItem::show(const StatusFrame& frame) {
    m_image = statusIcon(frame.image, frame.drop);
    if (m_icon) m_icon->setIcon(m_image);
}

void TrayStatusItem::setHotKeyNotices(const QStringList& notices) {
    m_menu.setHotKeyNotices(notices);
}

bool TrayStatusItem::isInTray() const {
    if (!m_icon || !m_icon->isVisible() || !m_host.supported()) return false;
    const QWidget* window = embeddedWindow();
    return window == nullptr || window->isVisible();
}

// A bar that draws the glyph by itself does not say where.
bool TrayStatusItem::hasPlace() const {
    const QWidget* window = embeddedWindow();
    return window != nullptr && window->isVisible() && !m_icon->geometry().isEmpty();
}

AttentionForm TrayStatusItem::attentionForm() const {
    if (m_reducesMotion) return AttentionForm::Steady;
    return embeddedWindow() == nullptr ? AttentionForm::Blink : AttentionForm::Bounce;
}

void TrayStatusItem::flashStatusImage(StatusImage image) {
    m_attention.stop();
    m_pulse.stop();
    m_flash.flash(image);
}

// The desktop may tell only after the item has begun to move.
void TrayStatusItem::setReducesMotion(bool reducesMotion) {
    if (std::exchange(m_reducesMotion, reducesMotion) == reducesMotion) return;
    if (!m_attention.isRunning()) return;
    m_attention.stop();
    m_attention.start(attentionForm());
}

void TrayStatusItem::chimeSignIn() {
    QAction* entry = m_menu.signInEntry();
    if (entry == nullptr) return;
    if (m_menu.isVisible()) m_chime.play(entry, m_reducesMotion);
    if (hasPlace()) return;
    m_pulse.start(m_reducesMotion ? AttentionForm::Steady : AttentionForm::Blink, pulses);
}

void TrayStatusItem::openMenu() {
    const QPoint place =
        hasPlace() ? menuPlace(m_icon->geometry(), m_menu.sizeHint()) : QCursor::pos();
    m_menu.popup(place);
}

} // namespace vorq
