#include "writing/WritingWordAlts.h"

#include <QPointer>

#include <algorithm>

namespace vorq {

bool WritingWordAlts::contains(const QUuid& id) const {
    return std::ranges::any_of(m_wordAlts,
                               [&id](const WritingWordAlt& alt) { return alt.id == id; });
}

void WritingWordAlts::beginLoading() {
    if (m_isLoading) return;
    m_isLoading = true;
    emit changed();
}

void WritingWordAlts::show(const QList<WritingWordAlt>& wordAlts) {
    m_isLoading = false;
    m_didLoad = true;
    m_wordAlts = wordAlts;
    const QPointer<WritingWordAlts> self(this);
    emit changed();
    if (self && m_applying && !contains(*m_applying)) endApplying();
}

bool WritingWordAlts::beginApplying(const QUuid& id) {
    if (m_applying || !contains(id)) return false;
    m_applying = id;
    const QPointer<WritingWordAlts> self(this);
    emit changed();
    if (self) emit editStarted();
    return true;
}

void WritingWordAlts::endApplying() {
    if (!m_applying) return;
    m_applying.reset();
    const QPointer<WritingWordAlts> self(this);
    emit changed();
    if (self) emit editFinished();
}

} // namespace vorq
