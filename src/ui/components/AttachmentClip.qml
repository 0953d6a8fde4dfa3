import QtQuick
import Vorq
import Vorq.Native

// What is attached to a prompt, with a way to take it off.
Squircle {
    id: clip

    required property string kind // "photo", "doc", "note" or "deepen"
    required property string label
    required property string detail // the whole of what the label stands for
    property real widest: 200
    property Item tabs: null // takes the keys of the button first
    readonly property alias removeButton: remove
    readonly property bool isTinted: kind === "deepen"
    readonly property int sidePadding: 10
    readonly property int gap: 6
    readonly property real rimOpacity: 0.22

    signal removed

    implicitHeight: Theme.grown(30)
    implicitWidth: sidePadding + row.width
    radius: Theme.radiusTile
    fillTop: isTinted ? Theme.accentSoft : Theme.track
    rimTop: isTinted ? Theme.faint(Theme.accentInk, rimOpacity) : Theme.hairline
    rimBottom: rimTop
    Accessible.role: Accessible.StaticText
    Accessible.name: label
    Accessible.description: detail

    // What the label is too short for.
    Tip {
        owner: clip
        words: name.truncated ? clip.detail : ""
        wanted: hover.hovered && !remove.hovered
    }
    HoverHandler {
        id: hover
    }
    Row {
        id: row
        x: clip.sidePadding
        height: parent.height
        spacing: clip.gap

        Ico {
            anchors.verticalCenter: parent.verticalCenter
            name: clip.kind
            size: 15
            color: clip.isTinted ? Theme.accentInk : Theme.ink2
        }
        Txt {
            id: name
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, clip.widest)
            text: clip.label
            size: Theme.metaSize
            font.weight: Font.Medium
            color: clip.isTinted ? Theme.accentInk : Theme.ink
            elide: clip.isTinted ? Text.ElideRight : Text.ElideMiddle // the end of a name tells its kind
            Accessible.ignored: true
        }
        IconButton {
            id: remove
            tabs: clip.tabs
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Remove %1").arg(clip.label)
            iconName: "close"
            size: 26
            slack: 3
            iconSize: 10
            onClicked: clip.removed()
        }
    }
}
