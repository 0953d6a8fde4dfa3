#pragma once

#include "ui/native/accessible/ItemAccessible.h"

namespace vorq {

/// A control that is pressed, with the role that its property `role` gives it: Qt takes each of
/// them for a button, whatever the page says. Whether it can be marked and is, its properties
/// `hasMarks` and `isMarked` say. One that is off offers no action. Main thread only.
class ControlAccessible final : public ItemAccessible, public QAccessibleActionInterface {
  public:
    using ItemAccessible::ItemAccessible;

    // QAccessibleInterface
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // QAccessibleActionInterface
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString& name) const override;
};

} // namespace vorq
