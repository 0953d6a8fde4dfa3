#include "ui/native/TextSelecting.h"

#include <QQuickTextDocument>
#include <QTextDocument>

namespace vorq {

void TextSelecting::setTarget(QQuickItem* target) {
    if (m_target == target) return;
    if (m_target) m_target->removeEventFilter(this);
    m_target = target;
    forget();
    if (m_target) m_target->installEventFilter(this);
    emit targetChanged();
}

bool TextSelecting::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_target) return QObject::eventFilter(watched, event);
    const bool isHandled = handle(*event);
    if (isHandled) event->accept();
    return isHandled;
}

QTextDocument* TextSelecting::document() const {
    const auto* document = m_target->property("textDocument").value<QQuickTextDocument*>();
    return document != nullptr ? document->textDocument() : nullptr;
}

bool TextSelecting::isComposing() const {
    return m_target->property("inputMethodComposing").toBool();
}

int TextSelecting::cursorPosition() const {
    return m_target->property("cursorPosition").toInt();
}

int TextSelecting::fixedEnd() const {
    const int start = m_target->property("selectionStart").toInt();
    const int end = m_target->property("selectionEnd").toInt();
    return cursorPosition() == start ? end : start;
}

void TextSelecting::select(int fixed, int moving) {
    QMetaObject::invokeMethod(m_target, "select", Q_ARG(int, fixed), Q_ARG(int, moving));
}

} // namespace vorq
