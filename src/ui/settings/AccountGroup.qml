import QtQuick
import Vorq
import Vorq.Native

// Who is signed in, and what can be changed about the account.
SettingsGroup {
    id: group

    readonly property AccountCard account: App.settings.account
    readonly property alias profileRow: profile
    readonly property alias privacyRow: privacy

    title: qsTr("Account")

    SettingsRow {
        id: profile
        width: group.width
        text: group.account.name
        sub: group.account.email === group.account.name ? "" : group.account.email
        leadsOn: true
        picture: Avatar {
            picture: App.settings.account.picture
            initials: App.settings.account.initials
            Accessible.ignored: true // the row has the name
        }
        onClicked: App.settings.navigation.open(SettingsNavigation.SettingsPane.Profile)

        TextButton {
            text: qsTr("Sign out")
            look: TextButton.Quiet
            size: 30
            onClicked: group.account.signOut()
        }
    }
    SettingsRow {
        id: privacy
        width: group.width
        text: qsTr("Privacy settings")
        sub: qsTr("Email address and password.")
        iconName: "key"
        tint: Theme.noteTile
        leadsOn: true
        onClicked: App.settings.navigation.open(SettingsNavigation.SettingsPane.Privacy)
    }
}
