import QtQuick
import Vorq
import Vorq.Native

// The theme, the glass and the colours of the panel, with what they look like beside or below them.
SettingsPage {
    id: page

    readonly property AppearanceChoices choices: App.settings.appearance
    readonly property PanelLook look: App.settings.panelLook
    readonly property int gap: 48
    readonly property int previewWidth: 320
    readonly property real listWidth: Theme.grown(640)
    readonly property real together: listWidth + gap + previewWidth
    readonly property bool isWide: width - 2 * sideRoom >= together

    title: qsTr("Customize")
    measure: isWide ? together : listWidth

    Grid {
        width: parent.width
        columns: page.isWide ? 2 : 1
        columnSpacing: page.gap
        rowSpacing: Theme.space5

        Column {
            id: list
            width: page.isWide ? page.listWidth : parent.width
            spacing: Theme.space5

            SettingsGroup {
                width: parent.width
                title: qsTr("Theme and glass")

                SettingsRow {
                    width: parent.width
                    text: qsTr("Theme")

                    ThemeChoice {
                        icons: ["moon", "sun"]
                        width: Math.max(implicitWidth, Theme.grown(204))
                    }
                }
                SettingsRow {
                    width: parent.width
                    text: qsTr("Glass")

                    GlassChoice {
                        width: Math.max(implicitWidth, Theme.grown(204))
                    }
                }
            }
            SettingsGroup {
                width: parent.width
                title: qsTr("Colors")
                remark: qsTr("Text follows its block: dark on a light one, light on a dark one.")

                PanelHexColorRow {
                    width: parent.width
                    text: qsTr("Background")
                    sub: qsTr("Tints Vorq's window. Leave empty for theme default.")
                    value: page.choices.background
                    fallback: page.look.ground
                    onCommitted: hex => page.choices.background = hex
                }
                PanelHexColorRow {
                    width: parent.width
                    text: qsTr("Your Blocks")
                    sub: qsTr("Sender (you) bubble fill in Vorq's window. Leave empty for theme default.")
                    value: page.choices.userBlock
                    fallback: preview.tokens.userBlock
                    onCommitted: hex => page.choices.userBlock = hex
                }
                PanelHexColorRow {
                    width: parent.width
                    text: qsTr("Assistant Blocks")
                    sub: qsTr("Vorq's block in the window. Leave empty for theme default.")
                    value: page.choices.assistantBlock
                    fallback: preview.tokens.botBlock
                    onCommitted: hex => page.choices.assistantBlock = hex
                }
            }
            TextButton {
                text: qsTr("Reset custom colors")
                iconName: "restart"
                size: 34
                onClicked: page.choices.resetColors()
            }
        }
        PanelPreview {
            id: preview
            width: page.previewWidth
        }
    }
}
