#pragma once

#include <QString>
#include <QStringList>

namespace vorq {

/// The takes of a session: those that were rejected, which the model is told to avoid, and those
/// that were seen, to which the writer can go back.
class TakeHistory {
  public:
    static constexpr qsizetype mostRejected = 4;
    static constexpr qsizetype mostSeen = 24;

    /// Oldest first, each once.
    [[nodiscard]] const QStringList& rejected() const { return m_rejected; }
    [[nodiscard]] const QStringList& seen() const { return m_seen; }

    /// Blank takes are none. Of more than the most, the oldest is dropped.
    void reject(QStringView take);
    void show(const QString& take);

    /// The take that is so many steps from the one on show, round and round; "" if none was seen.
    /// If what is on show is no take, the latest one is a step of either direction away.
    [[nodiscard]] QString neighbourOf(const QString& shown, int steps) const;

  private:
    QStringList m_rejected;
    QStringList m_seen;
};

} // namespace vorq
