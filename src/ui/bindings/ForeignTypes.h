#pragma once

#include "shell/dialogs/ColorDialog.h"
#include "shell/look/PanelLook.h"
#include "shell/overlay/WritingCard.h"
#include "shell/panel/AttachTrayState.h"
#include "shell/panel/AttachableNotes.h"
#include "shell/panel/AttachmentIntake.h"
#include "shell/panel/AttachmentList.h"
#include "shell/panel/HeldOffer.h"
#include "shell/panel/PanelOutlet.h"
#include "shell/panel/PanelSelectionBridge.h"
#include "shell/panel/PanelSignIn.h"
#include "shell/panel/PanelViewModel.h"
#include "shell/panel/WaitingPrompt.h"
#include "shell/permissions/PermissionRows.h"
#include "shell/permissions/SelfCheckList.h"
#include "shell/permissions/SelfTestRun.h"
#include "shell/permissions/Walkthrough.h"
#include "shell/settings/AccountCard.h"
#include "shell/settings/AppearanceChoices.h"
#include "shell/settings/AvatarPicture.h"
#include "shell/settings/PrivacyEdit.h"
#include "shell/settings/ProfileEdit.h"
#include "shell/settings/SettingsNavigation.h"
#include "shell/settings/SettingsViewModel.h"

#include <QtQml/qqml.h>

namespace vorq {

// Names the types of the shell to the pages, which the shell itself knows nothing of.

struct PanelViewModelForeign {
    Q_GADGET
    QML_FOREIGN(vorq::PanelViewModel)
    QML_NAMED_ELEMENT(PanelViewModel)
    QML_UNCREATABLE("Belongs to the program")
};

struct WaitingPromptForeign {
    Q_GADGET
    QML_FOREIGN(vorq::WaitingPrompt)
    QML_NAMED_ELEMENT(WaitingPrompt)
    QML_UNCREATABLE("Belongs to the program")
};

struct PanelLookForeign {
    Q_GADGET
    QML_FOREIGN(vorq::PanelLook)
    QML_NAMED_ELEMENT(PanelLook)
    QML_UNCREATABLE("Belongs to the program")
};

struct PanelSelectionBridgeForeign {
    Q_GADGET
    QML_FOREIGN(vorq::PanelSelectionBridge)
    QML_NAMED_ELEMENT(PanelSelectionBridge)
    QML_UNCREATABLE("Belongs to the program")
};

struct PanelSignInForeign {
    Q_GADGET
    QML_FOREIGN(vorq::PanelSignIn)
    QML_NAMED_ELEMENT(PanelSignIn)
    QML_UNCREATABLE("Belongs to the program")
};

struct AttachableNotesForeign {
    Q_GADGET
    QML_FOREIGN(vorq::AttachableNotes)
    QML_NAMED_ELEMENT(AttachableNotes)
    QML_UNCREATABLE("Belongs to the program")
};

struct AttachmentIntakeForeign {
    Q_GADGET
    QML_FOREIGN(vorq::AttachmentIntake)
    QML_NAMED_ELEMENT(AttachmentIntake)
    QML_UNCREATABLE("Belongs to the program")
};

struct AttachTrayStateForeign {
    Q_GADGET
    QML_FOREIGN(vorq::AttachTrayState)
    QML_NAMED_ELEMENT(AttachTrayState)
    QML_UNCREATABLE("Belongs to the program")
};

struct HeldOfferForeign {
    Q_GADGET
    QML_FOREIGN(vorq::HeldOffer)
    QML_NAMED_ELEMENT(HeldOffer)
    QML_UNCREATABLE("Belongs to the program")
};

struct PanelOutletForeign {
    Q_GADGET
    QML_FOREIGN(vorq::PanelOutlet)
    QML_NAMED_ELEMENT(PanelOutlet)
    QML_UNCREATABLE("Belongs to the program")
};

struct AttachmentListForeign {
    Q_GADGET
    QML_FOREIGN(vorq::AttachmentList)
    QML_NAMED_ELEMENT(AttachmentList)
    QML_UNCREATABLE("Belongs to the program")
};

struct AccountCardForeign {
    Q_GADGET
    QML_FOREIGN(vorq::AccountCard)
    QML_NAMED_ELEMENT(AccountCard)
    QML_UNCREATABLE("Belongs to the program")
};

struct AppearanceChoicesForeign {
    Q_GADGET
    QML_FOREIGN(vorq::AppearanceChoices)
    QML_NAMED_ELEMENT(AppearanceChoices)
    QML_UNCREATABLE("Belongs to the program")
};

struct AvatarPictureForeign {
    Q_GADGET
    QML_FOREIGN(vorq::AvatarPicture)
    QML_NAMED_ELEMENT(AvatarPicture)
    QML_UNCREATABLE("Belongs to the program")
};

struct PermissionRowsForeign {
    Q_GADGET
    QML_FOREIGN(vorq::PermissionRows)
    QML_NAMED_ELEMENT(PermissionRows)
    QML_UNCREATABLE("Belongs to the program")
};

struct PrivacyEditForeign {
    Q_GADGET
    QML_FOREIGN(vorq::PrivacyEdit)
    QML_NAMED_ELEMENT(PrivacyEdit)
    QML_UNCREATABLE("Belongs to the program")
};

struct ProfileEditForeign {
    Q_GADGET
    QML_FOREIGN(vorq::ProfileEdit)
    QML_NAMED_ELEMENT(ProfileEdit)
    QML_UNCREATABLE("Belongs to the program")
};

struct SettingsNavigationForeign {
    Q_GADGET
    QML_FOREIGN(vorq::SettingsNavigation)
    QML_NAMED_ELEMENT(SettingsNavigation)
    QML_UNCREATABLE("Belongs to the program")
};

struct SettingsViewModelForeign {
    Q_GADGET
    QML_FOREIGN(vorq::SettingsViewModel)
    QML_NAMED_ELEMENT(SettingsViewModel)
    QML_UNCREATABLE("Belongs to the program")
};

struct WalkthroughForeign {
    Q_GADGET
    QML_FOREIGN(vorq::Walkthrough)
    QML_NAMED_ELEMENT(Walkthrough)
    QML_UNCREATABLE("Belongs to the program")
};

struct SelfTestRunForeign {
    Q_GADGET
    QML_FOREIGN(vorq::SelfTestRun)
    QML_NAMED_ELEMENT(SelfTestRun)
    QML_UNCREATABLE("Belongs to the program")
};

struct SelfCheckListForeign {
    Q_GADGET
    QML_FOREIGN(vorq::SelfCheckList)
    QML_NAMED_ELEMENT(SelfCheckList)
    QML_UNCREATABLE("Belongs to the program")
};

struct WritingCardForeign {
    Q_GADGET
    QML_FOREIGN(vorq::WritingCard)
    QML_NAMED_ELEMENT(WritingCard)
    QML_UNCREATABLE("Belongs to the program")
};

struct ColorDialogForeign {
    Q_GADGET
    QML_FOREIGN(vorq::ColorDialog)
    QML_NAMED_ELEMENT(ColorDialog)
};

} // namespace vorq
