#include "ui/native/ContextMenu.h"

#include <QQuickWindow>

namespace vorq {
namespace {

void addEntry(QMenu& menu, const QJSValue& entry) {
    const QString text = entry.property(QStringLiteral("text")).toString();
    if (!entry.hasProperty(QStringLiteral("text"))) {
        menu.addSeparator();
        return;
    }
    QAction* action = menu.addAction(text);
    action->setEnabled(!entry.property(QStringLiteral("off")).toBool());
    const QJSValue act = entry.property(QStringLiteral("act"));
    QObject::connect(action, &QAction::triggered, &menu, [act] { act.call(); });
}

} // namespace

ContextMenu::ContextMenu(QObject* parent) : QObject(parent) {}

ContextMenu::~ContextMenu() {
    delete m_menu;
}

void ContextMenu::open(QQuickItem* item, QPointF at, const QJSValue& entries) {
    if (item == nullptr || item->window() == nullptr) return;
    delete m_menu;
    m_menu = new QMenu;
    const int count = entries.property(QStringLiteral("length")).toInt();
    for (int i = 0; i < count; ++i)
        addEntry(*m_menu, entries.property(static_cast<quint32>(i)));
    m_menu->winId(); // has its window made
    m_menu->windowHandle()->setTransientParent(item->window());
    connect(item->window(), &QWindow::visibleChanged, m_menu, &QWidget::close);
    m_menu->popup(item->mapToGlobal(at).toPoint());
}

} // namespace vorq
