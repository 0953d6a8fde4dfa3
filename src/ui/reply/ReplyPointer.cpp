#include "ui/reply/ReplyPointer.h"

#include "ui/reply/ReplyView.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWheelEvent>

#include <cmath>

namespace vorq {

bool ReplyPointer::isTripleClick() const {
    const int longest = QGuiApplication::styleHints()->mouseDoubleClickInterval();
    return m_sinceDoubleClick.isValid() && m_sinceDoubleClick.elapsed() < longest &&
           m_view.layout().count() > 0;
}

void ReplyPointer::handlePress(QMouseEvent& event) {
    // The other buttons come here for those who handle them.
    if (event.button() != Qt::LeftButton) return event.ignore();
    m_pressedAt = event.position();
    m_view.setKeepMouseGrab(true);
    m_view.setCaretShown(false);
    m_view.setVisualFocus(false);
    m_view.forceActiveFocus(Qt::MouseFocusReason);
    m_isSelecting = !isTripleClick();
    if (!m_isSelecting) {
        m_sinceDoubleClick.invalidate();
        const ReplyRange block = m_view.selection().blockAt(event.position());
        return m_view.select(block.from, block.to);
    }
    const ReplyPosition at = m_view.layout().positionAt(event.position());
    const bool extends = event.modifiers().testFlag(Qt::ShiftModifier);
    m_view.select(extends ? m_view.selection().anchor() : at, at);
}

void ReplyPointer::handleMove(const QMouseEvent& event) {
    if (!m_isSelecting) return;
    m_view.select(m_view.selection().anchor(), m_view.layout().positionAt(event.position()));
}

void ReplyPointer::handleRelease(const QMouseEvent& event) {
    m_view.setKeepMouseGrab(false);
    m_isSelecting = false;
    if (m_view.hasSelection()) return;
    const QString link = m_view.layout().linkAt(event.position());
    if (!link.isEmpty() && link == m_view.layout().linkAt(m_pressedAt))
        emit m_view.linkActivated(link);
}

void ReplyPointer::handleDoubleClick(QMouseEvent& event) {
    if (event.button() != Qt::LeftButton || m_view.layout().count() == 0) return event.ignore();
    m_sinceDoubleClick.start();
    m_isSelecting = false;
    const ReplyRange word = m_view.selection().wordAt(event.position());
    m_view.select(word.from, word.to);
}

void ReplyPointer::handleHover(QHoverEvent& event) {
    const QPointF at = event.position();
    if (!m_view.layout().linkAt(at).isEmpty())
        m_view.setCursor(Qt::PointingHandCursor);
    else if (m_view.layout().covers(at, {{}, m_view.layout().end()}))
        m_view.setCursor(Qt::IBeamCursor);
    else
        m_view.unsetCursor();
    event.ignore(); // what the reply stands in is hovered with it
}

void ReplyPointer::handleWheel(QWheelEvent& event) {
    const QPointF delta =
        event.pixelDelta().isNull() ? QPointF(event.angleDelta()) : QPointF(event.pixelDelta());
    const bool isSideways =
        event.modifiers().testFlag(Qt::ShiftModifier) || std::abs(delta.x()) > std::abs(delta.y());
    const double step = delta.x() != 0 ? delta.x() : delta.y();
    event.setAccepted(isSideways && m_view.scrollCodeAt(event.position(), -step));
}

} // namespace vorq
