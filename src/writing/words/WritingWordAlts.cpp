#include "writing/words/WritingWordAlts.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace vorq {

QString withWordReplaced(const QString& text, const WritingWordAlt& alt) {
    if (!alt.utf16Range || alt.utf16Range->location < 0) return text;
    const auto [location, length] = *alt.utf16Range;
    if (QStringView(text).mid(location, length) != alt.original) return text;
    return QString(text).replace(location, length, alt.alternative);
}

QList<WritingWordAlt> afterReplacing(const QList<WritingWordAlt>& wordAlts,
                                     const WritingWordAlt& replaced) {
    QList<WritingWordAlt> others;
    const std::int64_t longer = replaced.alternative.size() - replaced.original.size();
    for (WritingWordAlt alt : wordAlts) {
        if (alt.id == replaced.id) continue;
        const bool isBehind = alt.utf16Range && replaced.utf16Range &&
                              alt.utf16Range->location > replaced.utf16Range->location;
        if (isBehind) alt.utf16Range->location += longer;
        others.push_back(alt);
    }
    return others;
}

bool WritingWordAlts::contains(const QUuid& id) const {
    return find(id).has_value();
}

std::optional<WritingWordAlt> WritingWordAlts::find(const QUuid& id) const {
    const auto found = std::ranges::find(m_wordAlts, id, &WritingWordAlt::id);
    return found == m_wordAlts.end() ? std::nullopt : std::optional(*found);
}

void WritingWordAlts::endLoading() {
    if (std::exchange(m_isLoading, false)) emit changed();
}

void WritingWordAlts::place(const std::vector<std::optional<QRectF>>& frames) {
    QList<WritingWordAlt> placed = m_wordAlts;
    for (qsizetype at = 0; at < placed.size(); ++at)
        placed[at].wordFrame =
            at < std::ssize(frames) ? frames[static_cast<std::size_t>(at)] : std::nullopt;
    if (placed == m_wordAlts) return;
    m_wordAlts = placed;
    emit changed();
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
