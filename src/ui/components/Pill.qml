import QtQuick
import Vorq
import Vorq.Native

// A capsule that carries a choice in words.
Control {
    id: pill

    property real size: 32
    property real sidePadding: 14
    property real restOpacity: 1
    property real widest: 0 // of its text, which has more lines then; 0 for any
    readonly property real endPadding: 6
    readonly property real corner: Math.min(height, Theme.grown(size)) / 2
    readonly property bool isLit: enabled && (hovered || down || visualFocus)
    readonly property real rimOpacity: 0.22
    readonly property real litRimOpacity: 0.34

    implicitHeight: Math.max(Theme.grown(size), label.height + 2 * endPadding)
    implicitWidth: Math.ceil(label.width) + 2 * sidePadding
    ringRadius: corner

    background: Squircle {
        radius: pill.corner
        smoothing: 0
        fillTop: pill.down ? Theme.pressed : pill.hovered ? Theme.hover : "transparent"
        rimTop: Theme.faint(Theme.ink, pill.isLit ? pill.litRimOpacity : pill.rimOpacity)
        rimBottom: rimTop
    }
    contentItem: Item {
        Txt {
            id: label
            x: pill.sidePadding
            anchors.verticalCenter: parent.verticalCenter
            width: pill.widest > 0 ? Math.min(Math.ceil(implicitWidth), pill.widest) : implicitWidth
            text: pill.text
            size: Theme.rowSize
            font.weight: Font.Medium
            color: pill.enabled ? Theme.ink : Theme.inkOff
            opacity: pill.isLit ? 1 : pill.restOpacity
            wrapMode: pill.widest > 0 ? Text.Wrap : Text.NoWrap
        }
    }
}
