import QtQuick
import Vorq
import Vorq.Native

// Light or dark, for the whole application.
SettingsPage {
    id: page

    readonly property AppearanceChoices choices: App.settings.appearance

    title: qsTr("Appearance")

    SettingsGroup {
        width: parent.width
        remark: qsTr("Vorq's panel has a theme of its own.")

        SettingsRow {
            width: parent.width
            text: qsTr("Appearance")
            sub: qsTr("Settings and menus.")
            iconName: "sun"
            tint: Theme.noteTile

            Segmented {
                name: qsTr("Appearance")
                labels: [qsTr("Match System Appearance"), qsTr("Light"), qsTr("Dark")]
                width: Math.min(implicitWidth, page.width - 120)
                index: page.choices.application
                onChosen: index => page.choices.application = index
            }
        }
    }
}
