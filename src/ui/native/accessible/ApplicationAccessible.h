#pragma once

#include <QAccessibleObject>

#include <vector>

namespace vorq {

/// The program as a screen reader meets it, with its menus while they are open: Qt leaves those
/// out, so that one that walks the program would find no more than the entry that has the keyboard.
/// Main thread only.
class ApplicationAccessible final : public QAccessibleApplication {
  public:
    /// From now on the program has this one.
    static void install();

    // QAccessibleInterface
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;

  private:
    [[nodiscard]] std::vector<QAccessibleInterface*> windows() const;
};

} // namespace vorq
