import QtQuick
import Vorq

Row {
    id: page
    spacing: 28

    Column {
        width: 520
        spacing: 20

        SettingsGroup {
            width: parent.width
            title: "Vorq"
            remark: "A remark stands below the card, and wraps where it is longer than the card is wide, as this one."

            SettingsRow { width: parent.width; text: "Rest"; sub: "Email address and password."; iconName: "key"; tint: Theme.noteTile; leadsOn: true }
            SettingsRow { objectName: "want:hover"; width: parent.width; text: "Hover"; sub: "Background and chat block colors."; iconName: "palette"; leadsOn: true }
            SettingsRow { objectName: "want:pressed"; width: parent.width; text: "Pressed"; iconName: "sun"; tint: Theme.warn; leadsOn: true }
            SettingsRow { objectName: "want:focus"; width: parent.width; text: "Focus"; iconName: "moon"; leadsOn: true }
            SettingsRow { width: parent.width; enabled: false; text: "Disabled"; sub: "Nothing to choose here."; iconName: "mic"; leadsOn: true }
            SettingsRow {
                width: parent.width
                text: "Theme"
                iconName: "moon"
                Segmented { name: "Theme"; labels: ["Dark", "Light"]; isEven: true }
            }
            SettingsRow {
                width: parent.width
                text: "Accessibility"
                sub: "Lets Vorq read highlighted text. Current status: not set."
                iconName: "access"
                Badge { anchors.verticalCenter: parent?.verticalCenter; text: "Not set"; look: Badge.Warn }
                TextButton { text: "Enable"; look: TextButton.Primary }
            }
        }
    }
    Column {
        width: 360
        spacing: 20

        SettingsGroup {
            width: parent.width
            title: "Narrow, with long words"

            SettingsRow {
                width: parent.width
                text: "What the row is about takes more words than fit beside its controls"
                sub: "So do the words below it, which go on for a while and then for another."
                iconName: "screen"
                leadsOn: true
            }
            SettingsRow {
                id: stacked
                width: parent.width
                text: "Controls that leave no room"
                iconName: "globe"
                Segmented { width: Math.min(implicitWidth, stacked.room); name: "Language"; labels: ["Deutsch", "English", "Français"] }
            }
        }
        SettingsGroup {
            width: parent.width
            title: "One row, no icon"

            SettingsRow {
                width: parent.width
                text: "Version"
                Txt { text: "1.0"; color: Theme.ink2 }
            }
        }
    }
}
