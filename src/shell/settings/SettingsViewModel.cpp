#include "shell/settings/SettingsViewModel.h"

#include "core/VorqAppState.h"

#include <utility>

namespace vorq {

using SettingsPane = SettingsNavigation::SettingsPane;

SettingsViewModel::SettingsViewModel(VorqAppState& state, LocalSignIn* localSignIn,
                                     std::shared_ptr<DocumentTools> tools)
    : m_reader(std::move(tools)),
      m_account(state.account(), m_reader),
      m_profile({state.account(), state.profileForm(), m_account}, m_reader),
      m_privacy(state.account(), state.privacyForm()),
      m_appearance(state.appearance()),
      m_permissions(state.permissions()),
      m_panelLook(state.appearance()),
      m_signIn(state.account(), state.signIn(), localSignIn),
      m_navigation(state, entries()) {}

SettingsNavigation::Entries SettingsViewModel::entries() {
    return {.isUnsaved =
                [this](SettingsPane pane) {
                    return (pane == SettingsPane::Profile && m_profile.isUnsaved()) ||
                           (pane == SettingsPane::Privacy && m_privacy.isUnsaved());
                },
            .forget =
                [this](SettingsPane pane) {
                    if (pane == SettingsPane::Profile) m_profile.reset();
                    if (pane == SettingsPane::Privacy) m_privacy.reset();
                }};
}

} // namespace vorq
