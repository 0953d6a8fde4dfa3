#pragma once

#include "ui/reply/ReplyBlocks.h"
#include "ui/reply/ReplyCodes.h"
#include "ui/reply/ReplyLayout.h"

#include <QQuickItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace vorq {

class ReplyCanvas;

/// A reply, set and drawn: its blocks, each in its own style. Only the blocks that change are set
/// anew, and a huge reply is set in slices. It draws no more than the strip that is told to be in
/// view. Main thread only.
class ReplySheet : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS
    /// The reply's source text.
    Q_PROPERTY(QString raw READ raw WRITE setRaw NOTIFY rawChanged)
    Q_PROPERTY(QColor baseColor READ baseColor WRITE setBaseColor NOTIFY themeChanged)
    Q_PROPERTY(QColor linkColor READ linkColor WRITE setLinkColor NOTIFY themeChanged)
    Q_PROPERTY(
        QColor selectionColor READ selectionColor WRITE setSelectionColor NOTIFY themeChanged)
    Q_PROPERTY(bool hasHighContrast READ hasHighContrast WRITE setHighContrast NOTIFY themeChanged)
    /// Times the usual size of text.
    Q_PROPERTY(double textScale READ textScale WRITE setTextScale NOTIFY themeChanged)
    /// The part of the item that is in view, from its top, in logical pixels.
    Q_PROPERTY(double viewTop READ viewTop WRITE setViewTop NOTIFY viewChanged)
    Q_PROPERTY(double viewHeight READ viewHeight WRITE setViewHeight NOTIFY viewChanged)
    /// While on, a block that comes in fades in over so many milliseconds.
    Q_PROPERTY(bool isGrowing MEMBER m_isGrowing NOTIFY growingChanged)
    Q_PROPERTY(int arrivalDuration MEMBER m_arrivalDuration NOTIFY arrivalDurationChanged)
    /// Of the widest line; the whole width for a reply with a table.
    Q_PROPERTY(double naturalWidth READ naturalWidth NOTIFY layoutChanged)
    Q_PROPERTY(QAbstractItemModel* codes READ codeModel CONSTANT)
    Q_PROPERTY(bool beginsWithCode READ beginsWithCode NOTIFY layoutChanged)

  public:
    ~ReplySheet() override;

    [[nodiscard]] const QString& raw() const { return m_blocks.raw(); }
    void setRaw(const QString& raw);
    [[nodiscard]] QColor baseColor() const { return m_theme.ink; }
    void setBaseColor(const QColor& color) { setThemePart(&ReplyTheme::ink, color); }
    [[nodiscard]] QColor linkColor() const { return m_theme.link; }
    void setLinkColor(const QColor& color) { setThemePart(&ReplyTheme::link, color); }
    [[nodiscard]] QColor selectionColor() const { return m_theme.selection; }
    void setSelectionColor(const QColor& color) { setThemePart(&ReplyTheme::selection, color); }
    [[nodiscard]] bool hasHighContrast() const { return m_theme.hasHighContrast; }
    void setHighContrast(bool isOn) { setThemePart(&ReplyTheme::hasHighContrast, isOn); }
    [[nodiscard]] double textScale() const { return m_theme.textScale; }
    void setTextScale(double scale) { setThemePart(&ReplyTheme::textScale, scale); }
    [[nodiscard]] double viewTop() const { return m_viewTop; }
    void setViewTop(double top);
    [[nodiscard]] double viewHeight() const { return m_viewHeight; }
    void setViewHeight(double height);
    [[nodiscard]] bool isGrowing() const { return m_isGrowing; }
    [[nodiscard]] double naturalWidth() const { return m_layout.naturalWidth(); }
    [[nodiscard]] const ReplyCodes& codes() const { return m_codes; }
    [[nodiscard]] QAbstractItemModel* codeModel() { return &m_codes; }
    [[nodiscard]] bool beginsWithCode() const;
    [[nodiscard]] const ReplyLayout& layout() const { return m_layout; }

    /// Moves wide code under the point sideways; false if there is none to move.
    bool scrollCodeAt(QPointF point, double dx);
    Q_INVOKABLE void copyCode(int number) const;
    /// The source of the code block; "" for a number that is none.
    Q_INVOKABLE [[nodiscard]] QString codeAt(int number) const;

  signals:
    void rawChanged();
    void themeChanged();
    void viewChanged();
    void growingChanged();
    void arrivalDurationChanged();
    void layoutChanged();

  protected:
    explicit ReplySheet(QQuickItem* parent);

    /// The layout has the changed blocks; they are not set yet.
    virtual void handleChange(const ReplyBlocks::Change& change) = 0;
    [[nodiscard]] ReplyCanvas& canvas() const { return *m_canvas; }
    /// Moves wide code until the position is in its plate.
    void scrollCodeTo(const ReplyPosition& position);

    void geometryChange(const QRectF& next, const QRectF& former) override;
    void updatePolish() override;

  private:
    template<typename Value>
    void setThemePart(Value ReplyTheme::* part, const Value& value) {
        if (m_theme.*part == value) return;
        m_theme.*part = value;
        handleTheme();
    }
    void handleTheme();
    void layOutNow();
    void publishLayout();
    void placeCanvas();
    void findCode();

    ReplyBlocks m_blocks;
    ReplyLayout m_layout;
    ReplyTheme m_theme;
    ReplyCanvas* m_canvas;
    ReplyCodes m_codes;
    QTimer m_more; // goes on with a layout that took too long
    bool m_isGrowing = false;
    int m_arrivalDuration = 0;
    double m_viewTop = 0;
    double m_viewHeight = 0;
};

} // namespace vorq
