#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace vorq {

/// Tells, while enabled, of each press of a mouse button in its window that is outside of an area.
/// The press goes on to what it was meant for. Main thread only.
class OutsidePress : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem* area MEMBER m_area NOTIFY areaChanged)
    /// Counts as inside, too: what opens and closes the area by itself; null for nothing.
    Q_PROPERTY(QQuickItem* opener MEMBER m_opener NOTIFY openerChanged)

  public:
    explicit OutsidePress(QQuickItem* parent = nullptr);
    ~OutsidePress() override;

  signals:
    void areaChanged();
    void openerChanged();
    void pressed();

  protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void watch();

    QPointer<QQuickItem> m_area;
    QPointer<QQuickItem> m_opener;
    QPointer<QQuickWindow> m_watched;
};

} // namespace vorq
