#include "ui/native/ContextMenu.h"

#include <QKeyEvent>
#include <QQuickWindow>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

void addEntry(QMenu& menu, const QJSValue& entry) {
    const QString text = entry.property(u"text"_s).toString();
    if (!entry.hasProperty(u"text"_s)) {
        menu.addSeparator();
        return;
    }
    QAction* action = menu.addAction(text);
    action->setEnabled(!entry.property(u"off"_s).toBool());
    const QJSValue act = entry.property(u"act"_s);
    QObject::connect(action, &QAction::triggered, &menu, [act] { act.call(); });
}

QList<QAction*> enabledEntries(const QMenu& menu) {
    QList<QAction*> entries = menu.actions();
    entries.removeIf(
        [](const QAction* action) { return !action->isEnabled() || action->isSeparator(); });
    return entries;
}

// A menu in which a letter leads to the next entry that begins with it, and Home and End to the
// ends.
class KeyedMenu final : public QMenu {
  protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (QAction* entry = entryFor(*event))
            setActiveAction(entry);
        else
            QMenu::keyPressEvent(event);
    }

  private:
    [[nodiscard]] QAction* entryFor(const QKeyEvent& event) const {
        QList<QAction*> entries = enabledEntries(*this);
        if (entries.isEmpty()) return nullptr;
        if (event.key() == Qt::Key_Home) return entries.first();
        if (event.key() == Qt::Key_End) return entries.last();
        const QString letter = event.text();
        if (letter.trimmed().isEmpty()) return nullptr;
        const qsizetype next = entries.indexOf(activeAction()) + 1;
        std::ranges::rotate(entries, entries.begin() + next);
        const auto found = std::ranges::find_if(entries, [&](const QAction* entry) {
            return entry->text().startsWith(letter, Qt::CaseInsensitive);
        });
        return found != entries.end() ? *found : nullptr;
    }
};

const QString styleSheet = uR"(
    QMenu { background: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1, stop: 0 %1, stop: 1 %2);
            border: 1px solid %3; border-radius: %4px; padding: 5px; }
    QMenu::item { height: %5px; padding: 0 24px 0 12px; border-radius: %6px; color: %7; }
    QMenu::item:selected { background: %8; color: %9; }
    QMenu::item:disabled { background: transparent; color: %10; }
    QMenu::separator { height: 1px; margin: 5px 12px; background: %11; }
)"_s;
constexpr int radius = 12;
constexpr int rowRadius = 8;

QString inStyle(const QColor& color) {
    return color.name(QColor::HexArgb);
}

} // namespace

ContextMenu::ContextMenu(QObject* parent) : QObject(parent) {}

ContextMenu::~ContextMenu() {
    delete m_menu;
}

void ContextMenu::open(QQuickItem* item, QPointF at, const QJSValue& entries, bool byKey) {
    if (item == nullptr || item->window() == nullptr) return;
    delete m_menu;
    m_menu = new KeyedMenu;
    const int count = entries.property(u"length"_s).toInt();
    for (int i = 0; i < count; ++i)
        addEntry(*m_menu, entries.property(static_cast<quint32>(i)));
    applyLook();
    m_menu->winId(); // has its window made
    m_menu->windowHandle()->setTransientParent(item->window());
    connect(item->window(), &QWindow::visibleChanged, m_menu, &QWidget::close);
    m_menu->popup(item->mapToGlobal(at).toPoint());
    if (byKey) m_menu->setActiveAction(enabledEntries(*m_menu).value(0));
}

// Before its window is made.
void ContextMenu::applyLook() {
    m_menu->setFont(m_font);
    m_menu->setMinimumWidth(m_leastWidth);
    m_menu->setStyleSheet(styleSheet
                              .arg(inStyle(m_groundTop), inStyle(m_groundBottom), inStyle(m_edge),
                                   QString::number(m_isRounded ? radius : 0),
                                   QString::number(m_rowHeight), QString::number(rowRadius),
                                   inStyle(m_ink), inStyle(m_highlight), inStyle(m_highlightInk))
                              .arg(inStyle(m_inkOff), inStyle(m_rule)));
    m_menu->setAttribute(Qt::WA_TranslucentBackground, m_isRounded);
    m_menu->setWindowFlag(Qt::FramelessWindowHint);
    m_menu->setWindowFlag(Qt::NoDropShadowWindowHint, m_isRounded);
}

} // namespace vorq
