#pragma once

#include "platform/BackendAtLogin.h"
#include "platform/linux/desktop/SystemdUserUnit.h"

#include <QCoreApplication>
#include <QStringList>
#include <QUrl>

#include <chrono>

namespace vorq {

/// Starts the program `vorq-gateway` at login: by its unit where the user's systemd knows that,
/// else by an entry in the user's autostart folder, which is also where it listens at another
/// address than its own.
class LinuxBackendAtLogin final : public BackendAtLogin {
    Q_DECLARE_TR_FUNCTIONS(vorq::LinuxBackendAtLogin)

  public:
    struct Setting {
        QString configurationFolder;
        QString gateway; ///< absolute path of the program, "" for none
        QUrl address;    ///< where Vorq looks for its backend
        std::chrono::milliseconds startLimit{5000};
    };

    explicit LinuxBackendAtLogin(Setting setting);

    [[nodiscard]] PortSupport supported() const override;
    [[nodiscard]] bool isOn() const override;
    Outcome switchOn() override;
    Outcome switchOff() override;
    Outcome remove() override;

    /// The program beside the running one, else the one that a terminal would find; "" for none.
    [[nodiscard]] static QString findGateway(const QString& executable);

  private:
    [[nodiscard]] QString entryPath() const;
    [[nodiscard]] QStringList arguments() const;
    [[nodiscard]] bool isInEntry() const;
    [[nodiscard]] Outcome writeEntry() const;
    [[nodiscard]] Outcome removeEntry() const;
    [[nodiscard]] bool answers() const;
    [[nodiscard]] Outcome startNow() const;

    Setting m_setting;
    SystemdUserUnit m_unit;
};

} // namespace vorq
