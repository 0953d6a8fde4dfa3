#pragma once

#include <QObject>
#include <QString>

namespace vorq {

class HeldCapture;

/// A captured text that waits for the user's word, since it reads like a secret. The text itself is
/// not shown. Main thread only.
class HeldOffer final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isHolding READ isHolding NOTIFY changed)
    /// The name of the application that it is from; "" if unknown.
    Q_PROPERTY(QString from READ from NOTIFY changed)

  public:
    /// The capture must outlive this object.
    explicit HeldOffer(HeldCapture& held);

    [[nodiscard]] bool isHolding() const;
    [[nodiscard]] QString from() const;
    Q_INVOKABLE void discard();

  signals:
    void changed();
    void discarded();
    /// What a screen reader should say.
    void announced(const QString& sentence);

  private:
    void announce();

    HeldCapture& m_held;
};

} // namespace vorq
