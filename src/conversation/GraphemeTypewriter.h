#pragma once

#include <QString>

#include <optional>
#include <span>
#include <vector>

namespace vorq {

/// How fast a text of some length is typed.
struct GraphemePace {
    double base;     ///< characters per second for a text of this length
    double duration; ///< seconds that the whole text should take
    double rate;     ///< characters per second, the faster of both

    /// The length counts characters and is at least 1.
    [[nodiscard]] static GraphemePace forLength(qsizetype length);
};

/// Where typing rests between two positions: after a blank or a mark shortly before the later one,
/// else at the later one itself.
[[nodiscard]] qsizetype preferTypingBoundary(std::span<const QStringView> graphemes, qsizetype from,
                                             qsizetype toward);

/// A text that is typed character by character, paced by elapsed time rather than by ticks.
class GraphemeTypewriter {
  public:
    struct Step {
        QString text;
        bool isTyping; ///< false once the whole text stands
    };

    /// The text must not be empty.
    explicit GraphemeTypewriter(QString text);

    /// What to show so many seconds after the start; nothing if no more than before.
    [[nodiscard]] std::optional<Step> at(double elapsed);

    [[nodiscard]] bool isFinished() const { return m_revealed == length(); }
    [[nodiscard]] const QString& text() const { return m_text; }

  private:
    [[nodiscard]] qsizetype length() const { return static_cast<qsizetype>(m_graphemes.size()); }

    QString m_text;
    std::vector<QStringView> m_graphemes; // into m_text, whose data never moves
    double m_rate;
    qsizetype m_revealed = 0;
};

} // namespace vorq
