import QtQuick
import Vorq

// The theme and the glass of the panel, with what they look like.
SettingsPage {
    title: qsTr("Panel look")

    SettingsGroup {
        width: parent.width

        SettingsRow {
            width: parent.width
            text: qsTr("Theme")
            iconName: "moon"

            ThemeChoice {}
        }
        SettingsRow {
            width: parent.width
            text: qsTr("Glass")
            iconName: "screen"
            tint: Theme.glassTile

            GlassChoice {}
        }
    }
    PanelPreview {
        anchors.horizontalCenter: parent?.horizontalCenter
    }
}
