import QtQuick
import QtQuick.Templates as T
import Vorq

// The upright scroller: a thin capsule that shows only while `shown`.
T.ScrollBar {
    id: scroller

    required property string scrolls // what it is said to do
    property bool shown: false
    readonly property int thickness: 6
    readonly property real restOpacity: 0.28
    readonly property real downOpacity: 0.44

    orientation: Qt.Vertical
    implicitWidth: thickness
    minimumSize: 0.08
    opacity: shown || pressed ? 1 : 0
    visible: opacity > 0 && size < 1
    Accessible.role: Accessible.ScrollBar
    Accessible.name: scrolls

    Behavior on opacity {
        NumberAnimation { duration: Motion.hover; easing.type: Easing.OutQuad }
    }

    contentItem: Rectangle {
        implicitWidth: scroller.thickness
        radius: scroller.thickness / 2
        color: Theme.faint(Theme.ink, scroller.pressed ? scroller.downOpacity : scroller.restOpacity)
    }
}
