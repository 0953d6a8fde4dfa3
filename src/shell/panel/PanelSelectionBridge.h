#pragma once

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QRectF>
#include <QString>

#include <functional>
#include <optional>

namespace vorq {

/// A text that the user selects in, as the bridge sees it. Rectangles are in the coordinates of the
/// container that holds the pill.
class SelectableText {
  public:
    SelectableText() = default;
    SelectableText(const SelectableText&) = delete;
    SelectableText& operator=(const SelectableText&) = delete;
    virtual ~SelectableText() = default;

    /// Nothing if the selection is empty or not within the text.
    [[nodiscard]] virtual std::optional<QString> selectedText() const = 0;

    /// Of the first selected line, as the text was laid out and as accessibility tells it.
    [[nodiscard]] virtual std::optional<QRectF> layoutSelectionRect() const = 0;
    [[nodiscard]] virtual std::optional<QRectF> axSelectionRect() const = 0;

    /// Whether selected glyphs are under the point of the screen.
    [[nodiscard]] virtual bool isPointInSelection(QPointF globalPoint) const = 0;

    /// Whether any glyphs are at the point of the screen, or so near that they are meant.
    [[nodiscard]] virtual bool hasGlyphsAt(QPointF globalPoint) const = 0;

    virtual void clearSelection() = 0;
};

/// What the selected span of a reply and the pill above it share. Main thread only.
class PanelSelectionBridge : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString selectedText READ selectedText NOTIFY selectedTextChanged)
    /// Empty for none; in the coordinates of the container.
    Q_PROPERTY(QRectF selectionBounds READ boundsOrEmpty NOTIFY selectionBoundsChanged)
    Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY hasSelectionChanged)
    /// The pill's frame, told by the pill; in the coordinates of the container.
    Q_PROPERTY(QRectF pillHitFrame READ pillHitFrameOrEmpty WRITE setPillHitFrame NOTIFY
                   pillHitFrameChanged)
    /// So near to the pill a press keeps the selection.
    Q_PROPERTY(double pillSlack READ roomAroundPill CONSTANT)

  public:
    /// A pill is shown for an excerpt of at least so many characters.
    static constexpr qsizetype minimumExcerpt = 2;
    static constexpr double pillSlack = 8;

    using QObject::QObject;

    [[nodiscard]] const QString& selectedText() const { return m_selectedText; }
    [[nodiscard]] const std::optional<QRectF>& selectionBounds() const { return m_bounds; }
    [[nodiscard]] bool hasSelection() const { return m_hasSelection; }
    [[nodiscard]] const std::optional<QRectF>& pillHitFrame() const { return m_pillHitFrame; }
    [[nodiscard]] QRectF boundsOrEmpty() const { return m_bounds.value_or(QRectF()); }
    [[nodiscard]] QRectF pillHitFrameOrEmpty() const { return m_pillHitFrame.value_or(QRectF()); }

    [[nodiscard]] double roomAroundPill() const { return pillSlack; }

    /// An empty frame is none.
    void setPillHitFrame(const QRectF& frame);

    void setOnDeepen(std::function<void(const QString&)> action) { m_onDeepen = std::move(action); }

    /// The text that is watched from now on; the former loses its selection. The owner is the
    /// object that the text lives and dies with.
    void watch(QObject* owner, SelectableText* text);
    [[nodiscard]] bool isWatching(const SelectableText* text) const;

    /// After each change of the selection.
    void refresh();
    void clear();

    /// Hands the excerpt to the panel and drops the selection; false if there is nothing to hand
    /// over, or nobody to take it.
    Q_INVOKABLE bool commitDeepen();

    /// A mouse button going down.
    struct Click {
        bool isInOtherWindow = false;
        /// On the screen.
        QPointF globalPoint;
        /// In the container.
        QPointF point;
    };
    [[nodiscard]] bool shouldClearSelection(const Click& click) const;

  signals:
    void selectedTextChanged();
    void selectionBoundsChanged();
    void hasSelectionChanged();
    void pillHitFrameChanged();

  private:
    [[nodiscard]] SelectableText* text() const { return m_owner ? m_text : nullptr; }
    [[nodiscard]] std::optional<QRectF> anchorRect() const;
    void publish(const QString& selected, const std::optional<QRectF>& bounds, bool hasSelection);

    QString m_selectedText;
    std::optional<QRectF> m_bounds;
    bool m_hasSelection = false;
    std::optional<QRectF> m_pillHitFrame;
    std::function<void(const QString&)> m_onDeepen;
    QPointer<QObject> m_owner;
    SelectableText* m_text = nullptr;
};

} // namespace vorq
