import QtQuick
import Vorq
import Vorq.Native

// The email address and the password of the account.
SettingsPage {
    id: page

    readonly property PrivacyEdit privacy: App.settings.privacy

    title: qsTr("Privacy settings")
    first: email.input

    // What is wrong is where one types next.
    component Field: FormField {
        width: parent.width
        readOnly: App.settings.privacy.isSaving
        onErrorChanged: if (error !== "") input.forceActiveFocus()
        onAccepted: App.settings.privacy.save()
    }

    FormCard {
        width: parent.width

        Field {
            id: email
            label: qsTr("Email")
            text: page.privacy.email
            error: page.privacy.emailError
            onTextChanged: page.privacy.email = text
        }
        Field {
            label: qsTr("Current password")
            placeholder: qsTr("Current password")
            isPassword: true
            text: page.privacy.currentPassword
            error: page.privacy.currentError
            onTextChanged: page.privacy.currentPassword = text
        }
        Field {
            label: qsTr("New password")
            placeholder: qsTr("At least 8 characters")
            isPassword: true
            text: page.privacy.newPassword
            error: page.privacy.newError
            onTextChanged: page.privacy.newPassword = text
        }
        Field {
            label: qsTr("Confirm new password")
            placeholder: qsTr("Confirm new password")
            isPassword: true
            text: page.privacy.confirmPassword
            error: page.privacy.confirmError
            onTextChanged: page.privacy.confirmPassword = text
        }
    }
    FormFoot {
        width: parent.width
        error: page.privacy.error
        isSaving: page.privacy.isSaving
        onSaveWanted: page.privacy.save()
        onCancelWanted: page.privacy.cancel()
    }
}
