import QtQuick
import Vorq
import Vorq.Native

// Copies something, and says for a moment that it did. It shows while `shown` or in focus.
IconButton {
    id: button

    property bool shown: false
    property bool isDone: false
    readonly property int doneTime: 1200

    size: 28
    iconSize: 15
    iconName: isDone ? "check" : "copy"
    opacity: shown || visualFocus || hovered ? 1 : 0
    onClicked: {
        isDone = true
        reset.restart()
    }

    Behavior on opacity {
        NumberAnimation { duration: Motion.hover; easing.type: Easing.OutQuad }
    }

    Squircle {
        anchors.fill: parent
        anchors.margins: button.slack
        z: -2
        radius: Theme.radiusCode
        fillTop: Theme.floatTop
        rimTop: Theme.hairline2
        rimBottom: Theme.hairline2
    }
    Timer {
        id: reset
        interval: button.doneTime
        onTriggered: button.isDone = false
    }
}
