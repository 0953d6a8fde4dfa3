#pragma once

#include <QObject>
#include <QString>

namespace vorq {

class Permissions;

/// What the system lets Vorq do, as windows of ours show it: "granted", "denied" or "pending". Main
/// thread only.
class PermissionRows final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString textCapture READ textCapture NOTIFY changed)
    Q_PROPERTY(QString screen READ screen NOTIFY changed)
    Q_PROPERTY(QString microphone READ microphone NOTIFY changed)
    /// What to look for where reading text was asked for and is not granted; "" for nothing.
    Q_PROPERTY(QString message READ message NOTIFY changed)

  public:
    /// The permissions must outlive the rows.
    explicit PermissionRows(Permissions& permissions);

    [[nodiscard]] QString textCapture() const;
    [[nodiscard]] QString screen() const;
    [[nodiscard]] QString microphone() const;
    [[nodiscard]] QString message() const;

    /// Looks at them anew.
    void refresh();

    Q_INVOKABLE void enableTextCapture() { emit textCaptureWanted(); }
    Q_INVOKABLE void openSelfTest() { emit selfTestWanted(); }

  signals:
    void changed();
    /// The user wants the system to let Vorq read highlighted text. Whoever hears of it asks.
    void textCaptureWanted();
    /// The user wants to find out what works here.
    void selfTestWanted();

  private:
    Permissions& m_permissions;
};

} // namespace vorq
