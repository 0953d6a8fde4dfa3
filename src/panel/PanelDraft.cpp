#include "panel/PanelDraft.h"

#include "platform/Defaults.h"

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::chrono::milliseconds rest{500};
constexpr std::chrono::seconds longestWait{5};
const QString draftKey = u"vorq.panel.draft"_s;

} // namespace

PanelDraft::~PanelDraft() {
    store();
}

QString PanelDraft::text() const {
    return m_defaults.string(draftKey).value_or(QString());
}

void PanelDraft::keep(const QString& text) {
    const Clock::Duration now = m_clock.now();
    if (m_waiting)
        m_clock.cancel(m_timer);
    else
        m_latest = now + longestWait;
    m_waiting = text;
    m_timer = m_clock.after(std::min<Clock::Duration>(rest, m_latest - now), [this] { store(); });
}

void PanelDraft::drop() {
    keep({});
    store();
}

void PanelDraft::store() {
    if (!m_waiting) return;
    m_clock.cancel(m_timer);
    const QString text = *m_waiting;
    m_waiting.reset();
    if (!text.isEmpty())
        m_defaults.keepString(draftKey, text);
    else if (m_defaults.contains(draftKey))
        m_defaults.remove(draftKey);
}

} // namespace vorq
