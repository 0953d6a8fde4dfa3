import QtQuick
import Vorq
import Vorq.Native

// The glass of the panel.
Segmented {
    readonly property AppearanceChoices choices: App.settings.appearance

    width: Math.max(implicitWidth, Theme.grown(172))
    name: qsTr("Glass")
    labels: [qsTr("Tinted"), qsTr("Clear")]
    index: choices.isGlassTinted ? 0 : 1
    isEven: true
    onChosen: index => choices.isGlassTinted = index === 0
}
