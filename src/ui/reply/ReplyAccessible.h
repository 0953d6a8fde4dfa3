#pragma once

#include <QAccessibleObject>

namespace vorq {

class ReplyLayout;
class ReplyView;

/// A reply as a screen reader meets it: its text with the places of its characters, and the
/// selection. Offsets count UTF-16 units of the blocks under each other; rectangles and points are
/// on the screen. Main thread only.
class ReplyAccessible final : public QAccessibleObject,
                              public QAccessibleTextInterface,
                              public QAccessibleActionInterface {
  public:
    explicit ReplyAccessible(ReplyView& view);

    /// From now on each reply that is asked about has one of these.
    static void install();

    /// Tells whoever listens that the selection of the reply is another one.
    static void selectionMoved(ReplyView& view);

    // QAccessibleInterface
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::StaticText; }
    [[nodiscard]] QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // QAccessibleTextInterface
    void selection(int index, int* start, int* end) const override;
    [[nodiscard]] int selectionCount() const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    [[nodiscard]] int cursorPosition() const override;
    void setCursorPosition(int position) override;
    [[nodiscard]] QString text(int start, int end) const override;
    [[nodiscard]] int characterCount() const override;
    [[nodiscard]] QRect characterRect(int offset) const override;
    [[nodiscard]] int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int, int) override {}
    QString attributes(int offset, int* start, int* end) const override;

    // QAccessibleActionInterface
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    [[nodiscard]] ReplyView& view() const;
    [[nodiscard]] const ReplyLayout& layout() const;
    [[nodiscard]] QRect onScreen(const QRectF& inView) const;
};

} // namespace vorq
