#pragma once

#include "platform/Accessibility.h"
#include "platform/PermissionProbe.h"

#include <QString>

namespace vorq {

/// What the program may do on Linux, as far as can be told without asking the user. Main thread
/// only; nothing here waits.
class LinuxPermissionProbe final : public PermissionProbe {
  public:
    /// Sound devices are sought in the folder.
    explicit LinuxPermissionProbe(const Accessibility& accessibility,
                                  QString soundFolder = QStringLiteral("/dev/snd"))
        : m_accessibility(accessibility), m_soundFolder(std::move(soundFolder)) {}

    /// Granted while the accessibility bus answers and toolkits use it.
    [[nodiscard]] PermissionState textCapture() const override;

    /// Granted on an X server, where every program may look at the screen.
    [[nodiscard]] PermissionState screen() const override;

    /// Granted if there is a device to record from and the user may open it.
    [[nodiscard]] PermissionState microphone() const override;

    [[nodiscard]] QString privacyListName() const override;
    [[nodiscard]] QString processPath() const override;

  private:
    const Accessibility& m_accessibility;
    QString m_soundFolder;
};

} // namespace vorq
