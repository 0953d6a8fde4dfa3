#pragma once

#include <QObject>

namespace vorq {

/// The panel as its hot key brings it up and down. Main thread only.
class SummonedPanel : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    [[nodiscard]] virtual bool isUp() const = 0;

    /// Whether a dialog of the panel waits for an answer. Panel and keyboard stay as they are then.
    [[nodiscard]] virtual bool hasDialog() const = 0;

    /// Brings the panel up with the keyboard, also if it is up already.
    virtual void bringUp() = 0;

    virtual void takeDown() = 0;
};

} // namespace vorq
