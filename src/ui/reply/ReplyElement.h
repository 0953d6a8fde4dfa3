#pragma once

#include "ui/reply/ReplyText.h"

#include <QAccessible>

#include <compare>

namespace vorq {

class ReplyElements;

/// What a screen reader finds beneath a reply: a block, one text of it, or a link in that.
struct ReplyElementKey {
    static constexpr int none = -1;

    int block = 0;
    int part = none; // none for a block that holds its texts: a list, a table, code, a quotation
    int link = none;

    auto operator<=>(const ReplyElementKey&) const = default;
};

/// An element beneath a reply. ReplyElements makes it, and ends it once it stands for nothing.
/// Rectangles are on the screen. Main thread only.
class ReplyElement : public QAccessibleInterface {
  public:
    ReplyElement(ReplyElements& elements, ReplyElementKey key) : m_elements(elements), m_key(key) {}

    [[nodiscard]] const ReplyElementKey& key() const { return m_key; }
    /// Where it is, once blocks above it came or went.
    void setKey(const ReplyElementKey& key) { m_key = key; }

    // QAccessibleInterface
    [[nodiscard]] bool isValid() const override { return true; }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text) const override { return {}; }
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::State state() const override;

  protected:
    [[nodiscard]] ReplyElements& elements() const { return m_elements; }
    [[nodiscard]] ReplyView& replyView() const;
    [[nodiscard]] const BlockLayout& block() const;
    [[nodiscard]] BlockLayout::Kind kind() const { return block().kind(); }
    /// Its place in the block.
    [[nodiscard]] virtual QRectF placeInBlock() const = 0;

  private:
    ReplyElements& m_elements;
    ReplyElementKey m_key;
};

/// A block that holds texts: a list, code, a quotation; and a divider, which holds none.
class ReplyGroupElement : public ReplyElement {
  public:
    using ReplyElement::ReplyElement;

    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::Role role() const override;

  protected:
    [[nodiscard]] QRectF placeInBlock() const override;
};

/// One text: a heading, a paragraph, an item, a cell or code. The caret of the reply is in one of
/// these, and the keyboard with it.
class ReplyTextElement : public ReplyElement, public ReplyText, public QAccessibleActionInterface {
  public:
    using ReplyElement::ReplyElement;
    using ReplyText::text;

    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // QAccessibleActionInterface
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

  protected:
    [[nodiscard]] QRectF placeInBlock() const override;
    [[nodiscard]] ReplyView& view() const override { return replyView(); }
    [[nodiscard]] ReplyRange span() const override;
    [[nodiscard]] BlockLayout::Part part() const;
};

class ReplyLinkElement final : public ReplyElement, public QAccessibleActionInterface {
  public:
    using ReplyElement::ReplyElement;

    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Link; }
    void* interface_cast(QAccessible::InterfaceType type) override;

    // QAccessibleActionInterface
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

  protected:
    [[nodiscard]] QRectF placeInBlock() const override;

  private:
    [[nodiscard]] BlockLayout::Link link() const;
};

} // namespace vorq
