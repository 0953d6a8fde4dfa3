#include "ui/native/TextLeading.h"

#include <QTextBlock>
#include <QTextCursor>

namespace vorq {

void TextLeading::setDocument(QQuickTextDocument* document) {
    if (m_document == document) return;
    m_document = document;
    if (document && document->textDocument())
        connect(document->textDocument(), &QTextDocument::contentsChanged, this,
                &TextLeading::apply);
    emit documentChanged();
    apply();
}

void TextLeading::setLeading(double leading) {
    if (m_leading == leading) return;
    m_leading = leading;
    emit leadingChanged();
    apply();
}

void TextLeading::apply() {
    if (m_isApplying || m_leading <= 0 || !m_document || !m_document->textDocument()) return;
    QTextDocument& text = *m_document->textDocument();
    m_isApplying = true;
    // A text that nobody has changed yet is set without any step to take back.
    const bool isFresh = !text.isUndoAvailable() && !text.isRedoAvailable();
    const bool keepsSteps = text.isUndoRedoEnabled();
    if (isFresh) text.setUndoRedoEnabled(false);
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().lineHeight() == m_leading) continue;
        QTextCursor cursor(block);
        QTextBlockFormat format;
        format.setLineHeight(m_leading, QTextBlockFormat::LineDistanceHeight);
        cursor.joinPreviousEditBlock();
        cursor.mergeBlockFormat(format);
        cursor.endEditBlock();
    }
    if (isFresh) text.setUndoRedoEnabled(keepsSteps);
    m_isApplying = false;
}

} // namespace vorq
