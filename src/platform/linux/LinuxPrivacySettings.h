#pragma once

#include "platform/trust/PrivacySettings.h"

#include <memory>

namespace vorq {

class AtSpiBus;
class Workspace;

/// There is no list of programs on Linux: the accessibility bus is on or off for all, and opening
/// the pane turns it on.
class LinuxPrivacySettings final : public PrivacySettings {
  public:
    /// The workspace must outlive the settings and what is under way.
    LinuxPrivacySettings(std::shared_ptr<AtSpiBus> bus, Workspace& workspace);

    void openPrivacyPane(const QString& anchor) override;
    /// Of those whose windows are known.
    QCoro::Task<QStringList> programsToRestart(std::stop_token stop) override;

  private:
    std::shared_ptr<AtSpiBus> m_bus;
    Workspace& m_workspace;
};

} // namespace vorq
