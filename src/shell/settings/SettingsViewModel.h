#pragma once

#include "shell/look/PanelLook.h"
#include "shell/panel/PanelSignIn.h"
#include "shell/permissions/PermissionRows.h"
#include "shell/settings/AccountCard.h"
#include "shell/settings/AppearanceChoices.h"
#include "shell/settings/AvatarReader.h"
#include "shell/settings/PrivacyEdit.h"
#include "shell/settings/ProfileEdit.h"
#include "shell/settings/SettingsNavigation.h"

#include <QObject>

#include <memory>

namespace vorq {

class DocumentTools;
class LocalSignIn;
class VorqAppState;

/// What the window of the settings shows and what its pages do. Main thread only.
class SettingsViewModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(vorq::SettingsNavigation* navigation READ navigation CONSTANT)
    Q_PROPERTY(vorq::PanelSignIn* signIn READ signIn CONSTANT)
    Q_PROPERTY(vorq::AccountCard* account READ account CONSTANT)
    Q_PROPERTY(vorq::ProfileEdit* profile READ profile CONSTANT)
    Q_PROPERTY(vorq::PrivacyEdit* privacy READ privacy CONSTANT)
    Q_PROPERTY(vorq::AppearanceChoices* appearance READ appearance CONSTANT)
    Q_PROPERTY(vorq::PermissionRows* permissions READ permissions CONSTANT)
    /// Of the panel, for its preview.
    Q_PROPERTY(vorq::PanelLook* panelLook READ panelLook CONSTANT)

  public:
    /// The state and the local sign-in, if there is one, must outlive the view model.
    SettingsViewModel(VorqAppState& state, LocalSignIn* localSignIn,
                      std::shared_ptr<DocumentTools> tools);

    [[nodiscard]] SettingsNavigation* navigation() { return &m_navigation; }
    [[nodiscard]] PanelSignIn* signIn() { return &m_signIn; }
    [[nodiscard]] AccountCard* account() { return &m_account; }
    [[nodiscard]] ProfileEdit* profile() { return &m_profile; }
    [[nodiscard]] PrivacyEdit* privacy() { return &m_privacy; }
    [[nodiscard]] AppearanceChoices* appearance() { return &m_appearance; }
    [[nodiscard]] PermissionRows* permissions() { return &m_permissions; }
    [[nodiscard]] PanelLook* panelLook() { return &m_panelLook; }

    Q_INVOKABLE void choosePicture() { emit pictureWanted(); }

  signals:
    /// The user wants to choose a file for the profile.
    void pictureWanted();

  private:
    [[nodiscard]] SettingsNavigation::Entries entries();

    AvatarReader m_reader;
    AccountCard m_account;
    ProfileEdit m_profile;
    PrivacyEdit m_privacy;
    AppearanceChoices m_appearance;
    PermissionRows m_permissions;
    PanelLook m_panelLook;
    PanelSignIn m_signIn;
    SettingsNavigation m_navigation;
};

} // namespace vorq
