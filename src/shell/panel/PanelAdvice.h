#pragma once

#include "capture/selection/CaptureMiss.h"

#include <QObject>
#include <QSet>
#include <QString>

namespace vorq {

class VorqAppState;

/// The line under the draft: what went wrong or is missing, until it does not matter any more. Main
/// thread only.
class PanelAdvice final : public QObject {
    Q_OBJECT

  public:
    /// The state must outlive this object.
    explicit PanelAdvice(VorqAppState& state);

    /// "" for nothing.
    [[nodiscard]] const QString& sentence() const { return m_sentence; }
    void say(const QString& sentence);
    void clear() { say({}); }

  signals:
    void changed();

  private:
    void tellNothingCaptured(const QString& application, CaptureMiss miss);
    void followPermissions();

    VorqAppState& m_state;
    QString m_sentence;
    QSet<QString> m_knownToShowNothing; // applications of which the user was told
};

} // namespace vorq
