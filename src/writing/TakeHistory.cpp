#include "writing/TakeHistory.h"

#include "support/text/Text.h"

namespace vorq {
namespace {

void addOnce(QStringList& takes, const QString& take, qsizetype most) {
    if (take.isEmpty() || takes.contains(take)) return;
    takes += take;
    if (takes.size() > most) takes.removeFirst();
}

} // namespace

void TakeHistory::reject(QStringView take) {
    addOnce(m_rejected, trimmed(take).toString(), mostRejected);
}

void TakeHistory::show(const QString& take) {
    if (!trimmed(take).isEmpty()) addOnce(m_seen, take, mostSeen);
}

QString TakeHistory::neighbourOf(const QString& shown, int steps) const {
    if (m_seen.isEmpty()) return {};
    const qsizetype count = m_seen.size();
    const qsizetype at = m_seen.indexOf(shown);
    if (at < 0) return m_seen.back();
    return m_seen[((at + steps) % count + count) % count];
}

} // namespace vorq
