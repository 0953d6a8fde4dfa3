#include "ui/native/ContextMenu.h"

#include <QQuickWindow>

#include <algorithm>

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

QAction* firstEnabled(const QMenu& menu) {
    const QList<QAction*> actions = menu.actions();
    const auto found = std::ranges::find_if(actions, [](const QAction* action) {
        return action->isEnabled() && !action->isSeparator();
    });
    return found != actions.end() ? *found : nullptr;
}

const QString styleSheet = QStringLiteral(R"(
    QMenu { background: %1; border: 1px solid %2; border-radius: %7px; padding: 5px; }
    QMenu::item { height: %8px; padding: 0 24px 0 12px; border-radius: %9px; color: %3; }
    QMenu::item:selected { background: %5; color: %6; }
    QMenu::item:disabled { background: transparent; color: %4; }
    QMenu::separator { height: 1px; margin: 5px 12px; background: %2; }
)");
constexpr int radius = 12;
constexpr int rowRadius = 8;

} // namespace

ContextMenu::ContextMenu(QObject* parent) : QObject(parent) {}

ContextMenu::~ContextMenu() {
    delete m_menu;
}

void ContextMenu::open(QQuickItem* item, QPointF at, const QJSValue& entries, bool byKey) {
    if (item == nullptr || item->window() == nullptr) return;
    delete m_menu;
    m_menu = new QMenu;
    const int count = entries.property(QStringLiteral("length")).toInt();
    for (int i = 0; i < count; ++i)
        addEntry(*m_menu, entries.property(static_cast<quint32>(i)));
    applyLook();
    m_menu->winId(); // has its window made
    m_menu->windowHandle()->setTransientParent(item->window());
    connect(item->window(), &QWindow::visibleChanged, m_menu, &QWidget::close);
    m_menu->popup(item->mapToGlobal(at).toPoint());
    if (byKey) m_menu->setActiveAction(firstEnabled(*m_menu));
}

// Before its window is made.
void ContextMenu::applyLook() {
    m_menu->setFont(m_font);
    m_menu->setStyleSheet(styleSheet.arg(m_ground.name(), m_edge.name(), m_ink.name(),
                                         m_inkOff.name(), m_highlight.name(), m_highlightInk.name(),
                                         QString::number(m_isRounded ? radius : 0),
                                         QString::number(m_rowHeight), QString::number(rowRadius)));
    m_menu->setAttribute(Qt::WA_TranslucentBackground, m_isRounded);
    m_menu->setWindowFlag(Qt::FramelessWindowHint);
    m_menu->setWindowFlag(Qt::NoDropShadowWindowHint, m_isRounded);
}

} // namespace vorq
