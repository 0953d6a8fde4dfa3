// How the user selects in a reply, by mouse and by keys.

#include "ui/native/ScreenReader.h"
#include "ui/reply/ReplyCanvas.h"
#include "ui/reply/ReplyView.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickWindow>
#include <QStyleHints>
#include <QTextBoundaryFinder>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vorq {
namespace {

// So near to glyphs a press means them.
constexpr double glyphSlack = 16;
constexpr double lineSlack = 8;

// The word that a character of a text belongs to; between words, the space.
BlockRange wordOf(const QString& text, qsizetype character) {
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, text);
    words.setPosition(std::min(character + 1, text.size()));
    const qsizetype from = std::max<qsizetype>(0, words.toPreviousBoundary());
    const qsizetype to = words.toNextBoundary();
    return {from, to < 0 ? text.size() : to};
}

// By words it goes past their ends, and back to their beginnings; -1 where the text ends.
qsizetype stepped(const QString& text, qsizetype offset, bool isForward, bool byWord) {
    QTextBoundaryFinder finder(byWord ? QTextBoundaryFinder::Word : QTextBoundaryFinder::Grapheme,
                               text);
    finder.setPosition(offset);
    const auto end = isForward ? QTextBoundaryFinder::EndOfItem : QTextBoundaryFinder::StartOfItem;
    qsizetype next = offset;
    do
        next = isForward ? finder.toNextBoundary() : finder.toPreviousBoundary();
    while (byWord && next > 0 && next < text.size() && !finder.boundaryReasons().testFlag(end));
    return next;
}

// From a menu or another window the user comes back to where they were.
bool comesAndGoes(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

// Where a position is once the blocks have changed; nothing if its block is gone.
std::optional<ReplyPosition> movedWith(const ReplyBlocks::Change& change, ReplyPosition at) {
    if (at.block >= change.row + change.removed)
        at.block += change.added - change.removed;
    else if (at.block >= change.row + change.added)
        return std::nullopt;
    return at;
}

bool isUnseen(QStringView text) {
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar character) {
        return character == ReplyStyle::isolateStart || character == ReplyStyle::isolateEnd;
    });
}

} // namespace

ReplyRange ReplyView::selection() const {
    return {std::min(m_anchor, m_cursor), std::max(m_anchor, m_cursor)};
}

void ReplyView::select(ReplyPosition anchor, ReplyPosition cursor) {
    if (m_anchor == anchor && m_cursor == cursor) return;
    m_anchor = anchor;
    m_cursor = cursor;
    selectionMoved();
}

void ReplyView::selectAll() {
    select({}, m_layout.end());
}

void ReplyView::clearSelection() {
    select(m_cursor, m_cursor);
}

void ReplyView::selectionMoved() {
    if (m_bridge) {
        if (hasSelection() && !m_bridge->isWatching(this)) m_bridge->watch(this, this);
        if (m_bridge->isWatching(this)) m_bridge->refresh();
    }
    watchClicks(hasSelection());
    m_canvas->repaint();
    m_events.handleCaretMove();
    emit selectionChanged();
    if (m_isCaretShown) emit caretChanged();
}

// What a growing reply took back cannot stay selected, and a block may have got shorter than where
// the caret was in it.
void ReplyView::moveSelection(const ReplyBlocks::Change& change) {
    const std::optional<ReplyPosition> anchor = movedWith(change, m_anchor);
    const std::optional<ReplyPosition> cursor = movedWith(change, m_cursor);
    if (!anchor || !cursor || *anchor > m_layout.end() || *cursor > m_layout.end())
        return select({}, {});
    select(m_layout.clamped(*anchor), m_layout.clamped(*cursor));
}

std::optional<QString> ReplyView::selectedText() const {
    const ReplyRange range = selection();
    if (range.isEmpty() || range.to > m_layout.end()) return std::nullopt;
    return m_layout.written(range);
}

std::optional<QRectF> ReplyView::layoutSelectionRect() const {
    const QRectF line = m_layout.firstLineRect(selection());
    if (line.isNull()) return std::nullopt;
    return m_container ? mapRectToItem(m_container, line) : line;
}

bool ReplyView::isPointInSelection(QPointF globalPoint) const {
    return m_layout.covers(mapFromGlobal(globalPoint), selection());
}

bool ReplyView::hasGlyphsAt(QPointF globalPoint) const {
    const QPointF at = mapFromGlobal(globalPoint);
    const ReplyRange all{{}, m_layout.end()};
    for (const double dx : {0.0, -glyphSlack, glyphSlack})
        for (const double dy : {0.0, -lineSlack, lineSlack})
            if (m_layout.covers(at + QPointF(dx, dy), all)) return true;
    return false;
}

void ReplyView::watchClicks(bool on) {
    if (m_isWatching == on) return;
    m_isWatching = on;
    if (on)
        qGuiApp->installEventFilter(this);
    else
        qGuiApp->removeEventFilter(this);
}

bool ReplyView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::MouseButtonPress) return false;
    // Each press passes by its window and then by items; only the first counts.
    const auto* pressed = qobject_cast<QWindow*>(watched);
    if (!pressed || !window() || !m_bridge || !m_bridge->isWatching(this)) return false;
    const QPointF at = static_cast<QMouseEvent*>(event)->globalPosition();
    const bool isPopup = pressed->type() == Qt::Popup;
    // A menu over this window is about what is selected. A press beside it comes to it, too.
    if (isPopup && pressed->transientParent() == window() &&
        QRectF(pressed->geometry()).contains(at))
        return false;
    PanelSelectionBridge::Click click;
    click.isInOtherWindow =
        pressed != window() && !(isPopup && QRectF(window()->geometry()).contains(at));
    click.globalPoint = at;
    click.point = m_container ? m_container->mapFromGlobal(at) : at;
    if (m_bridge->shouldClearSelection(click)) clearSelection();
    return false;
}

void ReplyView::mousePressEvent(QMouseEvent* event) {
    // The other buttons come here for those who handle them.
    if (event->button() != Qt::LeftButton) return event->ignore();
    const int tripleClickTime = QGuiApplication::styleHints()->mouseDoubleClickInterval();
    m_pressedAt = event->position();
    m_isSelecting = true;
    setCaretShown(false);
    setVisualFocus(false);
    setKeepMouseGrab(true);
    forceActiveFocus(Qt::MouseFocusReason);
    const ReplyPosition at = m_layout.positionAt(event->position());
    if (m_sinceDoubleClick.isValid() && m_sinceDoubleClick.elapsed() < tripleClickTime &&
        m_layout.count() > 0) {
        m_sinceDoubleClick.invalidate();
        select({at.block, 0}, {at.block, m_layout.block(at.block).plainText().size()});
        m_isSelecting = false;
        return;
    }
    select(event->modifiers().testFlag(Qt::ShiftModifier) ? m_anchor : at, at);
}

void ReplyView::mouseMoveEvent(QMouseEvent* event) {
    if (m_isSelecting) select(m_anchor, m_layout.positionAt(event->position()));
}

void ReplyView::mouseReleaseEvent(QMouseEvent* event) {
    setKeepMouseGrab(false);
    m_isSelecting = false;
    if (hasSelection()) return;
    const QString link = m_layout.linkAt(event->position());
    if (!link.isEmpty() && link == m_layout.linkAt(m_pressedAt)) emit linkActivated(link);
}

void ReplyView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || m_layout.count() == 0) return event->ignore();
    m_sinceDoubleClick.start();
    m_isSelecting = false;
    const ReplyPosition at = m_layout.characterAt(event->position());
    const BlockRange word = wordOf(m_layout.block(at.block).plainText(), at.offset);
    select({at.block, word.from}, {at.block, word.to});
}

void ReplyView::hoverMoveEvent(QHoverEvent* event) {
    const QPointF at = event->position();
    if (!m_layout.linkAt(at).isEmpty())
        setCursor(Qt::PointingHandCursor);
    else if (m_layout.covers(at, {{}, m_layout.end()}))
        setCursor(Qt::IBeamCursor);
    else
        unsetCursor();
    event->ignore(); // what the reply stands in is hovered with it
}

void ReplyView::hoverEnterEvent(QHoverEvent* event) {
    event->ignore();
}

void ReplyView::hoverLeaveEvent(QHoverEvent* event) {
    event->ignore();
}

void ReplyView::wheelEvent(QWheelEvent* event) {
    const QPointF delta =
        event->pixelDelta().isNull() ? QPointF(event->angleDelta()) : QPointF(event->pixelDelta());
    const bool isSideways =
        event->modifiers().testFlag(Qt::ShiftModifier) || std::abs(delta.x()) > std::abs(delta.y());
    const double step = delta.x() != 0 ? delta.x() : delta.y();
    if (isSideways && m_layout.scrollAt(event->position(), -step)) {
        m_canvas->repaint();
        event->accept();
        return;
    }
    event->ignore();
}

void ReplyView::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->matches(QKeySequence::Copy)) {
        copy();
    } else if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
    } else if (isEnter) {
        if (!takeEnter()) return event->ignore();
    } else if (const std::optional<ReplyPosition> next = positionAfter(*event)) {
        const bool extends = event->modifiers().testFlag(Qt::ShiftModifier);
        moveCaret(extends ? m_anchor : *next, *next);
    } else {
        return event->ignore();
    }
    event->accept();
}

void ReplyView::focusInEvent(QFocusEvent* event) {
    const bool isByMouse = event->reason() == Qt::MouseFocusReason;
    // A window that comes back finds things as they were.
    if (event->reason() != Qt::ActiveWindowFocusReason) setVisualFocus(!isByMouse);
    if (!comesAndGoes(event->reason())) setCaretShown(false);
    emit caretChanged();
    m_events.handleFocus(); // in place of what items tell themselves
}

void ReplyView::setVisualFocus(bool isVisual) {
    if (m_hasVisualFocus == isVisual) return;
    m_hasVisualFocus = isVisual;
    emit visualFocusChanged();
}

void ReplyView::focusOutEvent(QFocusEvent* event) {
    if (!comesAndGoes(event->reason())) setCaretShown(false);
    if (event->reason() != Qt::ActiveWindowFocusReason) setVisualFocus(false);
    emit caretChanged();
    QQuickItem::focusOutEvent(event);
}

QRectF ReplyView::caret() const {
    return m_isCaretShown && hasActiveFocus() && !hasSelection() ? m_layout.cursorRect(m_cursor)
                                                                 : QRectF();
}

QPointF ReplyView::menuPlace() const {
    const bool isSomewhere = m_isCaretShown || hasSelection();
    const QPointF at = isSomewhere ? m_layout.cursorRect(m_cursor).bottomLeft() : QPointF();
    const double bottom = std::min(height(), m_viewTop + m_viewHeight);
    const double top = std::clamp(m_viewTop, 0.0, std::max(0.0, bottom));
    return {std::clamp(at.x(), 0.0, std::max(0.0, width())),
            std::clamp(at.y(), top, std::max(top, bottom))};
}

void ReplyView::setCaretShown(bool isShown) {
    if (m_isCaretShown == isShown) return;
    m_isCaretShown = isShown;
    emit caretChanged();
}

void ReplyView::moveCaret(ReplyPosition anchor, ReplyPosition cursor) {
    const bool comesUp = !std::exchange(m_isCaretShown, true);
    const bool isElsewhere = m_anchor != anchor || m_cursor != cursor;
    if (m_layout.scrollTo(cursor)) m_canvas->repaint();
    select(anchor, cursor);
    if (!comesUp || isElsewhere) return;
    m_events.handleCaretMove();
    emit caretChanged();
}

void ReplyView::putCaret(ReplyPosition at) {
    forceActiveFocus(Qt::OtherFocusReason);
    moveCaret(at, at);
}

// What is selected is asked about, and the link that the caret is in followed.
bool ReplyView::takeEnter() {
    if (hasSelection()) return m_bridge && m_bridge->isWatching(this) && m_bridge->commitDeepen();
    if (!m_isCaretShown || m_layout.count() == 0) return false;
    const QString link = m_layout.block(m_cursor.block).linkAt(m_cursor.offset);
    if (!link.isEmpty()) emit linkActivated(link);
    return !link.isEmpty();
}

// Up and down scroll until the user has put a caret into the text, or selects. With a screen reader
// they put it there, at the line where it was last.
std::optional<ReplyPosition> ReplyView::positionAfter(const QKeyEvent& event) const {
    constexpr Qt::KeyboardModifiers known =
        Qt::ShiftModifier | Qt::ControlModifier | Qt::KeypadModifier;
    if (m_layout.count() == 0 || (event.modifiers() & ~known)) return std::nullopt;
    const bool byWord = event.modifiers().testFlag(Qt::ControlModifier);
    const bool isAtText = m_isCaretShown || event.modifiers().testFlag(Qt::ShiftModifier);
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        return neighbour((event.key() == Qt::Key_Left) == isReadLeftwards(), byWord);
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (byWord) return std::nullopt;
        if (!isAtText) return ScreenReader::isListening() ? std::optional(m_cursor) : std::nullopt;
        return lineBeside(event.key() == Qt::Key_Down);
    case Qt::Key_Home:
        if (!isAtText || byWord) return std::nullopt;
        return ReplyPosition{m_cursor.block, 0};
    case Qt::Key_End:
        if (!isAtText || byWord) return std::nullopt;
        return ReplyPosition{m_cursor.block, m_layout.block(m_cursor.block).plainText().size()};
    default:
        return std::nullopt;
    }
}

// Whether the text that the caret is in is read from right to left: there, an arrow to the left
// leads on.
bool ReplyView::isReadLeftwards() const {
    return m_layout.block(m_cursor.block).directionAt(m_cursor.offset) == Qt::RightToLeft;
}

// The nearest other line; what lies between blocks belongs to the one above.
ReplyPosition ReplyView::lineBeside(bool isBelow) const {
    const QRectF cursor = m_layout.cursorRect(m_cursor);
    const double step = std::max(1.0, cursor.height() / 2);
    double y = isBelow ? cursor.bottom() + step : cursor.top() - step;
    for (; y > 0 && y < m_layout.height(); y += isBelow ? step : -step) {
        const ReplyPosition at = m_layout.positionAt({cursor.left(), y});
        const double moved = m_layout.cursorRect(at).top() - cursor.top();
        if (isBelow ? moved > 1 : moved < -1) return at;
    }
    return isBelow ? m_layout.end() : ReplyPosition{};
}

ReplyPosition ReplyView::neighbour(bool isForward, bool byWord) const {
    const QString& text = m_layout.block(m_cursor.block).plainText();
    qsizetype from = m_cursor.offset;
    qsizetype next = stepped(text, from, isForward, byWord);
    while (next >= 0 &&
           isUnseen(QStringView(text).sliced(std::min(from, next), std::abs(next - from)))) {
        from = next;
        next = stepped(text, from, isForward, byWord);
    }
    if (next >= 0) return {m_cursor.block, next};
    if (isForward && m_cursor.block + 1 < m_layout.count()) return {m_cursor.block + 1, 0};
    if (!isForward && m_cursor.block > 0)
        return {m_cursor.block - 1, m_layout.block(m_cursor.block - 1).plainText().size()};
    return m_cursor;
}

} // namespace vorq
