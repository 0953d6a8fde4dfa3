import QtQuick
import Vorq
import Vorq.Native

// A capsule with a direction to the writing tools.
Control {
    id: chip

    property real size: 28
    property bool isChosen: false
    readonly property int sidePadding: 12
    readonly property real corner: height / 2

    implicitHeight: Theme.grown(size)
    implicitWidth: Math.ceil(label.implicitWidth) + 2 * sidePadding
    ringRadius: corner

    background: Squircle {
        radius: chip.corner
        smoothing: 0
        fillTop: chip.isChosen ? Theme.accentSoft2
               : chip.down ? Theme.secondaryDown : chip.hovered ? Theme.secondaryHover : Theme.secondaryFill
        rimTop: Theme.high ? Theme.strongInk : "transparent"
        rimBottom: rimTop
    }
    contentItem: Item {
        Txt {
            id: label
            anchors.centerIn: parent
            text: chip.text
            size: Theme.metaSize
            font.weight: Font.DemiBold
            color: !chip.enabled ? Theme.inkOff : chip.isChosen ? Theme.accentInk : Theme.ink
        }
    }
}
