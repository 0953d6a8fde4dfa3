#pragma once

#include <QAccessibleObject>

#include <vector>

class QQuickItem;

namespace vorq {

/// An item of a page as a screen reader meets it; by itself one that is a scope of the focus, such
/// as a list. Qt says of each scope around the control with the keyboard that it has it, too; this
/// never does. Its elements are in the order in which they stand under each other. Role and name
/// are those of the page. Readers are told when it goes off or on. Main thread only.
class ItemAccessible : public QAccessibleObject {
  public:
    explicit ItemAccessible(QQuickItem& item);
    ~ItemAccessible() override;
    ItemAccessible(const ItemAccessible&) = delete;
    ItemAccessible& operator=(const ItemAccessible&) = delete;

    /// From now on each scope that a page makes an element has one of these, and each control a
    /// `ControlAccessible`, each field for a password a `PasswordAccessible`.
    static void install();

    // QAccessibleInterface
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* focusChild() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;

  protected:
    [[nodiscard]] QQuickItem& subject() const;
    /// What the page says of the item.
    [[nodiscard]] QObject* attached() const;

  private:
    [[nodiscard]] std::vector<QQuickItem*> elements() const;
    void tellOfSwitch();

    QMetaObject::Connection m_switching;
};

} // namespace vorq
