#pragma once

#include <QJSValue>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace vorq {

/// The menu of a text, as the desktop shows menus. It closes with the window it came up over. Needs
/// an application with widgets. Main thread only.
class ContextMenu : public QObject {
    Q_OBJECT
    QML_ELEMENT

  public:
    explicit ContextMenu(QObject* parent = nullptr);
    ~ContextMenu() override;

    /// Shows the menu at a point of the item. An entry has a `text`, an `act` to call when it is
    /// chosen, and may be `off`; one without a text is a line.
    Q_INVOKABLE void open(QQuickItem* item, QPointF at, const QJSValue& entries);

  private:
    QPointer<QMenu> m_menu;
};

} // namespace vorq
