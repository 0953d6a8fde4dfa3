import QtQuick
import Vorq
import Vorq.Native

// How far the self-test has got.
Item {
    id: progress

    required property int finished
    required property int total
    readonly property real share: total > 0 ? finished / total : 0

    implicitHeight: 6
    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("%1 of %2 checks").arg(finished).arg(total)

    Squircle {
        anchors.fill: parent
        radius: height / 2
        smoothing: 0
        fillTop: Theme.track
        rimTop: Theme.high ? Theme.strongInk : "transparent"
        rimBottom: rimTop
    }
    Squircle {
        x: Theme.isMirrored ? parent.width - width : 0
        width: Math.max(height, parent.width * progress.share)
        height: parent.height
        radius: height / 2
        smoothing: 0
        fillTop: Theme.accent

        Behavior on width {
            enabled: !Motion.reduced
            NumberAnimation { duration: Motion.move; easing.type: Easing.OutCubic }
        }
    }
}
