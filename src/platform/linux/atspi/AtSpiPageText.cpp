#include "platform/linux/atspi/AtSpiPageText.h"

#include <algorithm>
#include <utility>

namespace vorq {

void AtSpiPageText::add(QStringView piece) {
    if (piece.isEmpty()) return;
    for (; !m_text.isEmpty() && m_breaksDue > breaksAtEnd();)
        m_text += u'\n';
    m_breaksDue = 0;
    m_keepsLine = false;
    m_text += piece;
}

void AtSpiPageText::addCell(QStringView piece) {
    if (m_hasCell) m_text += u'\t';
    m_hasCell = true;
    add(piece);
}

void AtSpiPageText::addApart(QStringView piece, qsizetype breaks) {
    if (!std::exchange(m_keepsLine, false)) m_breaksDue = std::max(m_breaksDue, breaks);
    add(piece);
    m_breaksDue = std::max(m_breaksDue, breaks);
}

bool AtSpiPageText::isMarker() const {
    const QStringView mark = QStringView(m_text).trimmed();
    return !mark.isEmpty() && m_text.back().isSpace() && !mark.back().isLetterOrNumber() &&
           std::ranges::none_of(mark, [](QChar unit) { return unit.isSpace(); });
}

qsizetype AtSpiPageText::breaksAtEnd() const {
    const auto text = std::ranges::find_if_not(m_text.rbegin(), m_text.rend(),
                                               [](QChar unit) { return unit == u'\n'; });
    return text - m_text.rbegin();
}

} // namespace vorq
