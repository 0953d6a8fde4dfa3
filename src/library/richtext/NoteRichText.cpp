#include "library/richtext/NoteRichText.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vorq {

QStringView identity(NoteTextStyle style) {
    static constexpr std::array<QStringView, noteTextStyleCount> names = {
        u"title",        u"heading",    u"subheading",   u"body",      u"mono",
        u"bulletedList", u"dashedList", u"numberedList", u"blockQuote"};
    return names[static_cast<std::size_t>(style)];
}

const NoteAttributes& NoteRichText::attributesAt(qsizetype position) const {
    Q_ASSERT(position >= 0 && position < length());
    std::size_t run = 0;
    while (position >= m_runs[run].length)
        position -= m_runs[run++].length;
    return m_runs[run].attributes;
}

void NoteRichText::append(QStringView text, const NoteAttributes& attributes) {
    m_text += text;
    appendRun(text.size(), attributes);
}

void NoteRichText::append(const NoteRichText& text) {
    if (&text == this) return append(NoteRichText(text));
    m_text += text.m_text;
    for (const Run& run : text.m_runs)
        appendRun(run.length, run.attributes);
}

void NoteRichText::appendRun(qsizetype length, const NoteAttributes& attributes) {
    if (length == 0) return;
    if (!m_runs.empty() && m_runs.back().attributes == attributes)
        m_runs.back().length += length;
    else
        m_runs.push_back({length, attributes});
}

void NoteRichText::change(qsizetype start, qsizetype length,
                          const std::function<void(NoteAttributes&)>& changeRun) {
    const qsizetype first = std::clamp<qsizetype>(start, 0, m_text.size());
    const qsizetype end = first + std::clamp<qsizetype>(length, 0, m_text.size() - first);
    qsizetype runStart = 0;
    for (Run& run : std::exchange(m_runs, {})) {
        const qsizetype runEnd = runStart + run.length;
        const qsizetype from = std::clamp(first, runStart, runEnd);
        const qsizetype to = std::clamp(end, from, runEnd);
        appendRun(from - runStart, run.attributes);
        if (from != to) {
            NoteAttributes changed = run.attributes;
            changeRun(changed);
            appendRun(to - from, changed);
        }
        appendRun(runEnd - to, run.attributes);
        runStart = runEnd;
    }
}

NoteRichText NoteRichText::sliced(qsizetype start, qsizetype length) const {
    const qsizetype first = std::clamp<qsizetype>(start, 0, m_text.size());
    const qsizetype end = first + std::clamp<qsizetype>(length, 0, m_text.size() - first);
    NoteRichText piece;
    piece.m_text = m_text.sliced(first, end - first);
    qsizetype runStart = 0;
    for (const Run& run : m_runs) {
        const qsizetype runEnd = runStart + run.length;
        piece.appendRun(std::clamp(end, runStart, runEnd) - std::clamp(first, runStart, runEnd),
                        run.attributes);
        runStart = runEnd;
    }
    return piece;
}

std::vector<NoteRichText> NoteRichText::paragraphs() const {
    std::vector<NoteRichText> paragraphs(1);
    qsizetype start = 0;
    for (const Run& run : m_runs) {
        const qsizetype end = start + run.length;
        while (start < end) {
            const QStringView rest = QStringView(m_text).sliced(start, end - start);
            const qsizetype found = rest.indexOf(u'\n');
            const qsizetype cut = found < 0 ? end : start + found;
            paragraphs.back().append(rest.first(cut - start), run.attributes);
            if (cut == end) break;
            paragraphs.emplace_back();
            start = cut + 1;
        }
        start = end;
    }
    return paragraphs;
}

} // namespace vorq
