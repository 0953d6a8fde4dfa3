#include "areas/Permissions.h"

#include "platform/trust/PrivacySettings.h"
#include "support/RawNames.h"

#include <tuple>

using namespace Qt::StringLiterals;

namespace vorq {

namespace {

constexpr auto permissionStates =
    rawNames<PermissionState>({{PermissionState::Granted, "granted"},
                               {PermissionState::Denied, "denied"},
                               {PermissionState::Pending, "pending"}});

} // namespace

QString rawString(PermissionState state) {
    return permissionStates.nameOf(state);
}

void Permissions::refreshPermissions() {
    if (!m_probe) return;
    const auto before = std::tuple(m_textCapture, m_screen, m_microphone);
    m_textCapture = m_probe->textCapture();
    m_screen = m_probe->screen();
    m_microphone = m_probe->microphone();
    if (before != std::tuple(m_textCapture, m_screen, m_microphone)) emit changed();
}

void Permissions::setPermissionMessage(const QString& message) {
    if (m_message == message) return;
    m_message = message;
    emit changed();
}

void Permissions::setShowAccessibilityWalkthrough(bool show) {
    if (m_showWalkthrough == show) return;
    m_showWalkthrough = show;
    emit changed();
}

void Permissions::requestTextCapturePermission() {
    if (m_privacySettings) m_privacySettings->openPrivacyPane(u"Privacy_Accessibility"_s);
    refreshPermissions();
    if (m_textCapture == PermissionState::Granted)
        setPermissionMessage({});
    else
        tellWhatToLookFor();
}

void Permissions::denyAccessibilityWalkthrough() {
    m_isWalkthroughDenied = true;
    setShowAccessibilityWalkthrough(false);
}

void Permissions::tellWhatToLookFor() {
    const QString name = m_probe ? m_probe->privacyListName() : u"Vorq"_s;
    const QString path = m_probe ? m_probe->processPath() : QString();
    setPermissionMessage(tr("If %1 already looks enabled in System Settings, select it, click − to "
                            "remove, then Enable again here. Quit Vorq (⌘Q) and reopen so the new "
                            "grant applies to: %2")
                             .arg(name, path));
}

void Permissions::adviseToGrantAgain() {
    tellWhatToLookFor();
    emit advised();
    if (!m_isWalkthroughDenied) setShowAccessibilityWalkthrough(true);
}

} // namespace vorq
