import QtQuick
import Vorq
import Vorq.Native

// Leads back to the end of the conversation after the user scrolled away from it.
IconButton {
    id: jump

    property bool wanted: false

    text: qsTr("Jump to latest")
    iconName: "down"
    size: 34
    iconSize: 17
    visible: opacity > 0
    opacity: wanted ? 1 : 0

    Behavior on opacity {
        NumberAnimation { duration: Motion.enter; easing.type: Easing.OutCubic }
    }

    Shadow {
        target: jump
        level: 2
        radius: jump.size / 2
        z: -3
    }
    Squircle {
        anchors.fill: parent
        z: -2
        radius: jump.size / 2
        smoothing: 0
        fillTop: Theme.floatTop
        fillBottom: Theme.floatBottom
        rimTop: Theme.floatRimTop
        rimBottom: Theme.floatRimBottom
        hairline: Theme.floatHairline
    }
}
