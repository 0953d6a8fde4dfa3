#include "conversation/GraphemeTypewriter.h"

#include "support/text/Characters.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <algorithm>

namespace vorq {
namespace {

constexpr double charactersPerSecond = 48;
constexpr double shortestDuration = 0.9;
constexpr double longestDuration = 7.5;
constexpr qsizetype boundaryWindow = 8;

double basePace(qsizetype length) {
    if (length <= 60) return 40;
    if (length <= 160) return 54;
    if (length <= 400) return 66;
    return 78;
}

bool restsAfter(QStringView grapheme) {
    constexpr QStringView marks = u".,;:!?)]}";
    if (grapheme.isEmpty()) return false;
    if (isWhitespaceCharacter(grapheme) || isNewline(grapheme.front().unicode())) return true;
    return grapheme.size() == 1 && marks.contains(grapheme.front());
}

} // namespace

GraphemePace GraphemePace::forLength(qsizetype length) {
    const auto count = static_cast<double>(length);
    const double base = basePace(length);
    const double duration =
        std::clamp(count / charactersPerSecond, shortestDuration, longestDuration);
    return {base, duration, std::max(base, count / duration)};
}

qsizetype preferTypingBoundary(std::span<const QStringView> graphemes, qsizetype from,
                               qsizetype toward) {
    if (from >= toward) return toward;
    const qsizetype lowest = std::max(toward - boundaryWindow, from);
    const auto length = static_cast<qsizetype>(graphemes.size());
    for (qsizetype i = std::min(toward, length); i >= lowest && i > 0; --i)
        if (restsAfter(graphemes[static_cast<std::size_t>(i - 1)])) return i;
    return toward;
}

GraphemeTypewriter::GraphemeTypewriter(QString text)
    : m_text(std::move(text)),
      m_graphemes(splitGraphemes(m_text)),
      m_rate(GraphemePace::forLength(length()).rate) {}

std::optional<GraphemeTypewriter::Step> GraphemeTypewriter::at(double elapsed) {
    const double reached = std::clamp(m_rate * elapsed, 0.0, static_cast<double>(length()));
    auto target = static_cast<qsizetype>(reached);
    if (target > m_revealed && target < length())
        target = preferTypingBoundary(m_graphemes, m_revealed, target);
    if (target == m_revealed) return std::nullopt;
    m_revealed = target;
    const bool isTyping = !isFinished();
    if (!isTyping) return Step{m_text, false};
    const QStringView next = m_graphemes[static_cast<std::size_t>(target)];
    return Step{m_text.left(next.data() - m_text.constData()), true};
}

} // namespace vorq
