#pragma once

#include <QColor>
#include <QFont>
#include <QJSValue>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace vorq {

/// The menu of a text, in a window of its own and in the colours it is given. It closes with the
/// window it came up over. Needs an application with widgets. Main thread only.
class ContextMenu : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor groundTop MEMBER m_groundTop NOTIFY lookChanged)
    Q_PROPERTY(QColor groundBottom MEMBER m_groundBottom NOTIFY lookChanged)
    Q_PROPERTY(QColor edge MEMBER m_edge NOTIFY lookChanged)
    /// Of the lines between entries.
    Q_PROPERTY(QColor rule MEMBER m_rule NOTIFY lookChanged)
    Q_PROPERTY(QColor ink MEMBER m_ink NOTIFY lookChanged)
    Q_PROPERTY(QColor inkOff MEMBER m_inkOff NOTIFY lookChanged)
    Q_PROPERTY(QColor highlight MEMBER m_highlight NOTIFY lookChanged)
    Q_PROPERTY(QColor highlightInk MEMBER m_highlightInk NOTIFY lookChanged)
    Q_PROPERTY(QFont font MEMBER m_font NOTIFY lookChanged)
    /// In logical pixels.
    Q_PROPERTY(int rowHeight MEMBER m_rowHeight NOTIFY lookChanged)
    Q_PROPERTY(int leastWidth MEMBER m_leastWidth NOTIFY lookChanged)
    /// Only where windows are translucent.
    Q_PROPERTY(bool isRounded MEMBER m_isRounded NOTIFY lookChanged)

  public:
    explicit ContextMenu(QObject* parent = nullptr);
    ~ContextMenu() override;

    /// Shows the menu at a point of the item. An entry has a `text`, an `act` to call when it is
    /// chosen, and may be `off`; one without a text is a line. Opened by a key, it begins at its
    /// first entry, which screen readers then read.
    Q_INVOKABLE void open(QQuickItem* item, QPointF at, const QJSValue& entries,
                          bool byKey = false);

  signals:
    void lookChanged();

  private:
    void applyLook();

    QColor m_groundTop;
    QColor m_groundBottom;
    QColor m_edge;
    QColor m_rule;
    QColor m_ink;
    QColor m_inkOff;
    QColor m_highlight;
    QColor m_highlightInk;
    QFont m_font;
    int m_rowHeight = 30;
    int m_leastWidth = 0;
    bool m_isRounded = false;
    QPointer<QMenu> m_menu;
};

} // namespace vorq
