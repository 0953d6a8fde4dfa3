#pragma once

#include "ui/native/accessible/ItemAccessible.h"

namespace vorq {

/// A field for a password as a screen reader meets it: by its name, and as long as what was typed,
/// but with what the field shows in place of it. Qt's own form tells the password itself, or else
/// nothing at all, not even the name. Main thread only.
class PasswordAccessible final : public ItemAccessible, public QAccessibleTextInterface {
  public:
    using ItemAccessible::ItemAccessible;

    // QAccessibleInterface
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::EditableText; }
    [[nodiscard]] QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // QAccessibleTextInterface; nothing in it can be selected from outside.
    void selection(int index, int* start, int* end) const override;
    [[nodiscard]] int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    [[nodiscard]] int cursorPosition() const override;
    void setCursorPosition(int position) override;
    [[nodiscard]] QString text(int start, int end) const override;
    [[nodiscard]] int characterCount() const override;
    [[nodiscard]] QRect characterRect(int) const override { return rect(); }
    [[nodiscard]] int offsetAtPoint(const QPoint&) const override { return -1; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int offset, int* start, int* end) const override;

  private:
    [[nodiscard]] QString shown() const;
};

} // namespace vorq
