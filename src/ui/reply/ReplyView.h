#pragma once

#include "shell/panel/PanelSelectionBridge.h"
#include "ui/native/SidewaysScrolling.h"
#include "ui/reply/ReplyBlocks.h"
#include "ui/reply/ReplyCodes.h"
#include "ui/reply/ReplyEvents.h"
#include "ui/reply/ReplyLayout.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QQuickItem>
#include <QTimer>
#include <QVariantAnimation>
#include <QtQml/qqmlregistration.h>

namespace vorq {

class ReplyCanvas;
class ReplyElements;

/// A reply as the user reads and selects it: its blocks, each in its own style, selectable across
/// blocks. Only the blocks that change are set anew, and a huge reply is set in slices. It draws no
/// more than the strip that is told to be in view. Main thread only.
class ReplyView : public QQuickItem,
                  public SelectableText,
                  public SidewaysScrolling,
                  private QAccessible::ActivationObserver {
    Q_OBJECT
    QML_ELEMENT
    /// The reply's source text.
    Q_PROPERTY(QString raw READ raw WRITE setRaw NOTIFY rawChanged)
    Q_PROPERTY(QColor baseColor READ baseColor WRITE setBaseColor NOTIFY colorsChanged)
    Q_PROPERTY(QColor linkColor READ linkColor WRITE setLinkColor NOTIFY colorsChanged)
    Q_PROPERTY(
        QColor selectionColor READ selectionColor WRITE setSelectionColor NOTIFY colorsChanged)
    Q_PROPERTY(
        bool hasHighContrast READ hasHighContrast WRITE setHighContrast NOTIFY highContrastChanged)
    /// Times the usual size of text.
    Q_PROPERTY(double textScale READ textScale WRITE setTextScale NOTIFY textScaleChanged)
    /// The part of the item that is in view, from its top, in logical pixels.
    Q_PROPERTY(double viewTop READ viewTop WRITE setViewTop NOTIFY viewChanged)
    Q_PROPERTY(double viewHeight READ viewHeight WRITE setViewHeight NOTIFY viewChanged)
    /// While on, a block that comes in fades in over so many milliseconds.
    Q_PROPERTY(bool isGrowing MEMBER m_isGrowing NOTIFY growingChanged)
    Q_PROPERTY(int arrivalDuration MEMBER m_arrivalDuration NOTIFY arrivalDurationChanged)
    Q_PROPERTY(vorq::PanelSelectionBridge* bridge MEMBER m_bridge NOTIFY bridgeChanged)
    Q_PROPERTY(QQuickItem* container MEMBER m_container NOTIFY containerChanged)
    /// Of the widest line; the whole width for a reply with a table.
    Q_PROPERTY(double naturalWidth READ naturalWidth NOTIFY layoutChanged)
    Q_PROPERTY(QAbstractItemModel* codes READ codeModel CONSTANT)
    Q_PROPERTY(bool beginsWithCode READ beginsWithCode NOTIFY layoutChanged)
    /// The whole reply as it is read aloud, for a screen reader; empty without one, and while the
    /// reply grows.
    Q_PROPERTY(QString spoken READ spoken NOTIFY spokenChanged)
    Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY selectionChanged)
    /// It has the keyboard, and was given it by the keyboard.
    Q_PROPERTY(bool visualFocus READ visualFocus NOTIFY visualFocusChanged)
    /// Where keys go on from, once the arrow keys were used in the reply; empty otherwise, and
    /// while something is selected.
    Q_PROPERTY(QRectF caret READ caret NOTIFY caretChanged)

  public:
    explicit ReplyView(QQuickItem* parent = nullptr);
    ~ReplyView() override;

    [[nodiscard]] const QString& raw() const { return m_blocks.raw(); }
    [[nodiscard]] QColor baseColor() const { return m_theme.ink; }
    [[nodiscard]] QColor linkColor() const { return m_theme.link; }
    [[nodiscard]] QColor selectionColor() const { return m_theme.selection; }
    [[nodiscard]] bool hasHighContrast() const { return m_theme.hasHighContrast; }
    [[nodiscard]] double textScale() const { return m_theme.textScale; }
    [[nodiscard]] double viewTop() const { return m_viewTop; }
    [[nodiscard]] double viewHeight() const { return m_viewHeight; }
    [[nodiscard]] double naturalWidth() const { return m_layout.naturalWidth(); }
    [[nodiscard]] const ReplyCodes& codes() const { return m_codes; }
    [[nodiscard]] QAbstractItemModel* codeModel() { return &m_codes; }
    [[nodiscard]] bool beginsWithCode() const;
    [[nodiscard]] bool hasSelection() const { return !selection().isEmpty(); }
    [[nodiscard]] QRectF caret() const;
    [[nodiscard]] bool visualFocus() const { return m_hasVisualFocus; }
    [[nodiscard]] const ReplyLayout& layout() const { return m_layout; }
    [[nodiscard]] ReplyRange selection() const;
    /// The end of the selection that moves, also while nothing is selected.
    [[nodiscard]] ReplyPosition cursor() const { return m_cursor; }
    /// Whether the caret is in the text, put there by the arrow keys.
    [[nodiscard]] bool isCaretShown() const { return m_isCaretShown; }
    [[nodiscard]] double arrivalOpacity() const;
    [[nodiscard]] QString spoken() const;
    /// What a screen reader finds beneath the reply.
    [[nodiscard]] ReplyElements& elements();

    void setRaw(const QString& raw);
    void setBaseColor(const QColor& color);
    void setLinkColor(const QColor& color);
    void setSelectionColor(const QColor& color);
    void setHighContrast(bool isOn);
    void setTextScale(double scale);
    void setViewTop(double top);
    void setViewHeight(double height);

    void select(ReplyPosition anchor, ReplyPosition cursor);
    /// Takes the keyboard, with the caret at a place.
    void putCaret(ReplyPosition at);
    Q_INVOKABLE void selectAll();
    /// Where a menu that a key opens stands: below the caret, or the end of the selection that
    /// moves, or as near to it as is in view.
    Q_INVOKABLE [[nodiscard]] QPointF menuPlace() const;
    /// The selection; without one, the whole reply as it was written.
    Q_INVOKABLE void copy() const;
    Q_INVOKABLE void copyCode(int number) const;
    /// The source of the code block; "" for a number that is none.
    Q_INVOKABLE [[nodiscard]] QString codeAt(int number) const;

    // SelectableText
    [[nodiscard]] std::optional<QString> selectedText() const override;
    [[nodiscard]] std::optional<QRectF> layoutSelectionRect() const override;
    [[nodiscard]] std::optional<QRectF> axSelectionRect() const override { return std::nullopt; }
    [[nodiscard]] bool isPointInSelection(QPointF globalPoint) const override;
    [[nodiscard]] bool hasGlyphsAt(QPointF globalPoint) const override;
    Q_INVOKABLE void clearSelection() override;
    [[nodiscard]] std::optional<double> sidewaysHeightAt(QPointF point) const override;

  signals:
    void rawChanged();
    void colorsChanged();
    void highContrastChanged();
    void textScaleChanged();
    void viewChanged();
    void growingChanged();
    void arrivalDurationChanged();
    void bridgeChanged();
    void containerChanged();
    void layoutChanged();
    void selectionChanged();
    void caretChanged();
    void visualFocusChanged();
    void spokenChanged();
    void linkActivated(const QString& address);

  protected:
    void geometryChange(const QRectF& next, const QRectF& former) override;
    void updatePolish() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    friend class ReplyCanvas;

    void accessibilityActiveChanged(bool isActive) override;
    void handleGrowth();
    bool setTheme(const ReplyTheme& theme); // false where it is the same
    void layOutNow();
    void publishLayout();
    void placeCanvas();
    void findCode();
    void fadeIn(int row);
    void selectionMoved();
    void moveSelection(const ReplyBlocks::Change& change);
    void setCaretShown(bool isShown);
    void moveCaret(ReplyPosition anchor, ReplyPosition cursor);
    void setVisualFocus(bool isVisual);
    [[nodiscard]] bool takeEnter();
    [[nodiscard]] std::optional<ReplyPosition> positionAfter(const QKeyEvent& event) const;
    [[nodiscard]] ReplyPosition lineBeside(bool isBelow) const;
    [[nodiscard]] bool isReadLeftwards() const;
    [[nodiscard]] ReplyPosition neighbour(bool isForward, bool byWord) const;
    void watchClicks(bool on);

    ReplyBlocks m_blocks;
    ReplyLayout m_layout;
    ReplyTheme m_theme;
    ReplyCanvas* m_canvas;
    QTimer m_more; // goes on with a layout that took too long
    QVariantAnimation m_arrival;
    int m_arrivingFrom = -1;
    bool m_isGrowing = false;
    int m_arrivalDuration = 0;
    double m_viewTop = 0;
    double m_viewHeight = 0;
    QPointer<PanelSelectionBridge> m_bridge;
    QPointer<QQuickItem> m_container;
    ReplyCodes m_codes;
    std::unique_ptr<ReplyElements> m_elements;
    ReplyEvents m_events{*this};
    ReplyPosition m_anchor;
    ReplyPosition m_cursor;
    QPointF m_pressedAt;
    QElapsedTimer m_sinceDoubleClick;
    bool m_isSelecting = false;
    bool m_isCaretShown = false;
    bool m_hasVisualFocus = false;
    bool m_isWatching = false;
};

} // namespace vorq
