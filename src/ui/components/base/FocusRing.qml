import QtQuick
import Vorq

// The ring round what has the keyboard.
Rectangle {
    id: ring

    property real around: Theme.radiusControl
    property real gap: Theme.ringGap
    readonly property int thickness: Theme.focusThickness

    anchors.fill: parent
    anchors.margins: -(gap + thickness)
    radius: around + gap + thickness
    color: "transparent"
    border.width: thickness
    border.color: Theme.focus
    z: 10
}
