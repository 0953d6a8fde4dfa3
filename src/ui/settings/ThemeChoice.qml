import QtQuick
import Vorq
import Vorq.Native

// The theme of the panel.
Segmented {
    readonly property AppearanceChoices choices: App.settings.appearance

    width: Math.max(implicitWidth, Theme.grown(172))
    name: qsTr("Theme")
    labels: [qsTr("Dark"), qsTr("Light")]
    index: choices.isPanelLight ? 1 : 0
    isEven: true
    onChosen: index => choices.isPanelLight = index === 1
}
