#pragma once

#include "shell/panel/PanelSelectionBridge.h"
#include "ui/native/SidewaysScrolling.h"
#include "ui/reply/PressesElsewhere.h"
#include "ui/reply/ReplyEvents.h"
#include "ui/reply/ReplyKeys.h"
#include "ui/reply/ReplyPointer.h"
#include "ui/reply/ReplySelection.h"
#include "ui/reply/ReplySheet.h"

#include <QPointer>

#include <memory>

namespace vorq {

class ReplyElements;

/// A reply as the user reads and selects it, by mouse and by keys, across blocks; and as a screen
/// reader does. Main thread only.
class ReplyView : public vorq::ReplySheet,
                  public SelectableText,
                  public SidewaysScrolling,
                  private QAccessible::ActivationObserver {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(vorq::PanelSelectionBridge* bridge MEMBER m_bridge NOTIFY bridgeChanged)
    Q_PROPERTY(QQuickItem* container MEMBER m_container NOTIFY containerChanged)
    Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY selectionChanged)
    /// Where keys go on from, once the arrow keys were used in the reply; empty otherwise, and
    /// while something is selected.
    Q_PROPERTY(QRectF caret READ caret NOTIFY caretChanged)
    /// It has the keyboard, and was given it by the keyboard.
    Q_PROPERTY(bool visualFocus READ visualFocus NOTIFY visualFocusChanged)
    /// The whole reply as it is read aloud, for a screen reader; empty without one, and while the
    /// reply grows.
    Q_PROPERTY(QString spoken READ spoken NOTIFY spokenChanged)

  public:
    explicit ReplyView(QQuickItem* parent = nullptr);
    ~ReplyView() override;

    [[nodiscard]] PanelSelectionBridge* bridge() const { return m_bridge; }
    [[nodiscard]] QQuickItem* container() const { return m_container; }
    [[nodiscard]] const ReplySelection& selection() const { return m_selection; }
    [[nodiscard]] bool hasSelection() const { return !m_selection.isEmpty(); }
    [[nodiscard]] QRectF caret() const;
    [[nodiscard]] bool visualFocus() const { return m_hasVisualFocus; }
    [[nodiscard]] QString spoken() const;
    /// What a screen reader finds beneath the reply.
    [[nodiscard]] ReplyElements& elements();

    void select(ReplyPosition anchor, ReplyPosition cursor);
    Q_INVOKABLE void selectAll() { select({}, layout().end()); }
    /// The same with the caret in the text, and in view.
    void moveCaret(ReplyPosition anchor, ReplyPosition cursor);
    /// Takes the keyboard, with the caret at a place.
    void putCaret(ReplyPosition at);
    void setCaretShown(bool isShown);
    void setVisualFocus(bool isVisual);
    /// Where a menu that a key opens stands: below the caret, or the end of the selection that
    /// moves, or as near to it as is in view.
    Q_INVOKABLE [[nodiscard]] QPointF menuPlace() const;
    /// The selection; without one, the whole reply as it was written.
    Q_INVOKABLE void copy() const;

    // SelectableText
    [[nodiscard]] std::optional<QString> selectedText() const override;
    [[nodiscard]] std::optional<QRectF> layoutSelectionRect() const override;
    [[nodiscard]] std::optional<QRectF> axSelectionRect() const override { return std::nullopt; }
    [[nodiscard]] bool isPointInSelection(QPointF globalPoint) const override;
    [[nodiscard]] bool hasGlyphsAt(QPointF globalPoint) const override;
    Q_INVOKABLE void clearSelection() override;
    [[nodiscard]] std::optional<double> sidewaysHeightAt(QPointF point) const override;

  signals:
    void bridgeChanged();
    void containerChanged();
    void selectionChanged();
    void caretChanged();
    void visualFocusChanged();
    void spokenChanged();
    void linkActivated(const QString& address);

  protected:
    void handleChange(const ReplyBlocks::Change& change) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void mousePressEvent(QMouseEvent* event) override { m_pointer.handlePress(*event); }
    void mouseMoveEvent(QMouseEvent* event) override { m_pointer.handleMove(*event); }
    void mouseReleaseEvent(QMouseEvent* event) override { m_pointer.handleRelease(*event); }
    void mouseDoubleClickEvent(QMouseEvent* event) override { m_pointer.handleDoubleClick(*event); }
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override { m_pointer.handleHover(*event); }
    void hoverLeaveEvent(QHoverEvent* event) override;
    void wheelEvent(QWheelEvent* event) override { m_pointer.handleWheel(*event); }
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void accessibilityActiveChanged(bool isActive) override;
    void tellSpoken();
    void handleSelectionMove();

    ReplySelection m_selection{layout()};
    QPointer<PanelSelectionBridge> m_bridge;
    QPointer<QQuickItem> m_container;
    std::unique_ptr<ReplyElements> m_elements;
    ReplyEvents m_events{*this};
    ReplyPointer m_pointer{*this};
    ReplyKeys m_keys{*this};
    PressesElsewhere m_pressesElsewhere{*this};
    bool m_hasVisualFocus = false;
};

} // namespace vorq
