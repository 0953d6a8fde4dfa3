#pragma once

#include "ui/reply/ReplyLayout.h"

#include <QAccessible>

namespace vorq {

class ReplyView;

/// The text of a reply or of a part of it as a screen reader reads it: by characters, words and the
/// lines that are seen, with the caret and what is selected. Offsets count UTF-16 units from the
/// beginning of the part; rectangles and points are on the screen. Main thread only.
class ReplyText : public QAccessibleTextInterface {
  public:
    void selection(int index, int* start, int* end) const override;
    [[nodiscard]] int selectionCount() const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    [[nodiscard]] int cursorPosition() const override;
    void setCursorPosition(int position) override;
    [[nodiscard]] QString text(int start, int end) const override;
    [[nodiscard]] int characterCount() const override;
    [[nodiscard]] QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary,
                                           int* start, int* end) const override;
    [[nodiscard]] QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary,
                                       int* start, int* end) const override;
    [[nodiscard]] QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary,
                                          int* start, int* end) const override;
    [[nodiscard]] QRect characterRect(int offset) const override;
    [[nodiscard]] int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int, int) override {}
    QString attributes(int offset, int* start, int* end) const override;

    /// The offset of a position, or that of the end of the part which is nearer.
    [[nodiscard]] int offsetOf(const ReplyPosition& position) const;

  protected:
    [[nodiscard]] virtual ReplyView& view() const = 0;
    /// The part that this is the text of.
    [[nodiscard]] virtual ReplyRange span() const = 0;

  private:
    [[nodiscard]] const ReplyLayout& layout() const;
    [[nodiscard]] ReplyPosition positionOf(int offset) const;
    [[nodiscard]] ReplyRange selected() const;
    /// The line that an offset is in, up to where the next one begins.
    [[nodiscard]] std::pair<int, int> lineAt(int offset) const;
    [[nodiscard]] QString line(int offset, int* start, int* end) const;
};

/// A rectangle of a reply on the screen, in logical pixels.
[[nodiscard]] QRect onScreen(const ReplyView& view, const QRectF& inView);

} // namespace vorq
