import QtQuick
import Vorq

// A permission and its state.
Item {
    id: line

    required property string text
    required property string iconName
    required property string permission // "granted", "denied" or "pending"
    property bool isAsking: false
    readonly property bool isGranted: permission === "granted"
    readonly property bool isDenied: permission === "denied"
    readonly property int sideRoom: 14
    readonly property int iconSize: Theme.grown(18)
    readonly property color tint: isGranted ? Theme.ok : isDenied ? Theme.bad : Theme.accentInk

    implicitHeight: Math.max(Theme.grown(40), words.height + 2 * Theme.space2)
    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.Grouping
    Accessible.name: text

    Rectangle {
        anchors.left: words.left
        anchors.right: parent.right
        anchors.rightMargin: line.sideRoom
        visible: !line.Positioner.isFirstItem
        height: 1
        color: Theme.hairline
    }
    Ico {
        id: icon
        anchors.left: parent.left
        anchors.leftMargin: line.sideRoom
        anchors.verticalCenter: parent.verticalCenter
        name: line.iconName
        size: line.iconSize
        color: line.tint
    }
    Txt {
        id: words
        anchors.left: icon.right
        anchors.leftMargin: Theme.space3
        anchors.right: state.left
        anchors.rightMargin: Theme.space2
        anchors.verticalCenter: parent.verticalCenter
        text: line.text
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        Accessible.ignored: true
    }
    Badge {
        id: state
        anchors.right: parent.right
        anchors.rightMargin: line.sideRoom
        anchors.verticalCenter: parent.verticalCenter
        text: line.isGranted ? qsTr("Granted") : line.isAsking ? qsTr("Turning on…") : line.isDenied ? qsTr("Denied") : qsTr("Not set")
        look: line.isGranted ? Badge.Ok : line.isAsking ? Badge.Neutral : line.isDenied ? Badge.Bad : Badge.Warn
    }
}
