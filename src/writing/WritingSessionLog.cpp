#include "writing/WritingSessionLog.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {

void WritingSessionLog::record(const QDateTime& at, const WritingToolsInteraction::Kind& kind) {
    m_interactions.push_back({.at = at, .kind = kind});
    if (m_interactions.size() > mostInteractions) m_interactions.erase(m_interactions.begin());
}

QString WritingSessionLog::contextBlock() const {
    if (m_interactions.empty()) return {};
    const std::size_t shown = std::min(m_interactions.size(), mostLines);
    QStringList lines;
    for (auto at = m_interactions.end() - static_cast<std::ptrdiff_t>(shown);
         at != m_interactions.end(); ++at)
        lines += at->promptLine();
    return u"Session interactions (use these to assist better — honor rejected takes, prior asks, "
           "and the current selection):\n"_s +
           lines.join(u'\n');
}

} // namespace vorq
