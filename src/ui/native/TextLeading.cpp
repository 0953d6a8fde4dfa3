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

void TextLeading::apply() {
    if (m_isApplying || !m_document || !m_document->textDocument()) return;
    QTextDocument& text = *m_document->textDocument();
    m_isApplying = true;
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().lineHeight() == m_leading) continue;
        QTextCursor cursor(block);
        QTextBlockFormat format;
        format.setLineHeight(m_leading, QTextBlockFormat::LineDistanceHeight);
        cursor.joinPreviousEditBlock();
        cursor.mergeBlockFormat(format);
        cursor.endEditBlock();
    }
    m_isApplying = false;
}

} // namespace vorq
