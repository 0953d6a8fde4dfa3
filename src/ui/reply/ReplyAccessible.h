#pragma once

#include "ui/reply/ReplyText.h"

#include <QAccessibleObject>

namespace vorq {

/// A reply as a screen reader meets it: all of its text, and beneath it headings, paragraphs,
/// lists, tables and code as elements of their own (ReplyElements). Main thread only.
class ReplyAccessible final : public QAccessibleObject,
                              public ReplyText,
                              public QAccessibleActionInterface {
  public:
    explicit ReplyAccessible(ReplyView& view);
    using ReplyText::text;

    /// From now on each reply that is asked about has one of these.
    static void install();

    // QAccessibleInterface
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* focusChild() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Document; }
    [[nodiscard]] QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // QAccessibleActionInterface
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

  protected:
    [[nodiscard]] ReplyView& view() const override;
    [[nodiscard]] ReplyRange span() const override;
};

} // namespace vorq
