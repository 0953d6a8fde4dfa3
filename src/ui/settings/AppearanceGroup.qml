import QtQuick
import Vorq
import Vorq.Native

// How the windows of the program look, and the panel beside them.
SettingsGroup {
    id: group

    readonly property AppearanceChoices choices: App.settings.appearance
    readonly property alias applicationRow: application
    readonly property alias panelRow: panel

    title: qsTr("Appearance")

    SettingsRow {
        id: application
        width: group.width
        text: [qsTr("Match System Appearance"), qsTr("Light"), qsTr("Dark")][group.choices.application]
        sub: qsTr("Settings and menus.")
        iconName: "sun"
        tint: Theme.noteTile
        leadsOn: true
        onClicked: App.settings.navigation.open(SettingsNavigation.SettingsPane.Appearance)
    }
    SettingsRow {
        id: panel
        width: group.width
        text: qsTr("Panel look")
        sub: qsTr("Theme and glass of Vorq's window.")
        iconName: "frame"
        leadsOn: true
        onClicked: App.settings.navigation.open(SettingsNavigation.SettingsPane.PanelLook)
    }
}
