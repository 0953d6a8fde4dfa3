import QtQuick
import Vorq
import Vorq.Native

// How the panel looks: the quick choices, and the way to the colours.
SettingsGroup {
    id: group

    readonly property alias customizeRow: customize

    title: qsTr("Vorq")

    SettingsRow {
        id: customize
        width: group.width
        text: qsTr("Customize")
        sub: qsTr("Background and chat block colors.")
        iconName: "palette"
        tint: Theme.lookTile
        leadsOn: true
        onClicked: App.settings.navigation.open(SettingsNavigation.SettingsPane.CustomizePanel)
    }
    SettingsRow {
        width: group.width
        text: qsTr("Theme")
        iconName: "moon"

        ThemeChoice {}
    }
    SettingsRow {
        width: group.width
        text: qsTr("Glass")
        iconName: "screen"
        tint: Theme.glassTile

        GlassChoice {}
    }
}
