#pragma once

#include <QObject>
#include <QString>

namespace vorq {

/// A captured text that reads like a secret, until the user says what becomes of it. It is in
/// memory alone and in no message, so neither the backend nor a saved chat nor a log gets it. Main
/// thread only.
class HeldCapture final : public QObject {
    Q_OBJECT

  public:
    [[nodiscard]] bool isEmpty() const { return m_text.isEmpty(); }

    /// The name of the application that it is from, "" if that has none.
    [[nodiscard]] const QString& application() const { return m_application; }

    /// Takes the place of what was held before.
    void hold(const QString& text, const QString& application);

    /// Gives the text, which is not held any longer; "" if none was.
    [[nodiscard]] QString release();

    void discard() { (void)release(); }

  signals:
    /// A text has come to be held, or has been let go of.
    void changed();

  private:
    QString m_text;
    QString m_application;
};

} // namespace vorq
