import QtQuick
import Vorq
import Vorq.Native

// One of the choices of a `Segmented`.
Control {
    id: segment

    property string iconName: ""
    property bool isChosen: false
    readonly property bool hasMarks: true
    readonly property bool isMarked: isChosen
    readonly property int sidePadding: 13
    readonly property int iconSize: Theme.grown(15)
    readonly property int iconGap: 7
    readonly property int corner: 8
    readonly property real iconRoom: iconName !== "" ? iconSize + iconGap : 0
    readonly property color ink: !enabled ? Theme.inkOff : isChosen ? Theme.chosenInk : hovered ? Theme.ink : Theme.ink2

    role: Accessible.RadioButton
    tip: label.truncated ? text : ""
    ringRadius: corner
    ringGap: 1
    z: visualFocus ? 1 : 0 // its ring lies over the others
    Accessible.checkable: hasMarks
    Accessible.checked: isMarked
    implicitWidth: Math.ceil(strong.implicitWidth + iconRoom) + 2 * sidePadding

    // What is chosen is bolder, and the others must not move for it.
    Txt {
        id: strong
        visible: false
        text: segment.text
        size: Theme.metaSize
        font.weight: Font.DemiBold
    }
    background: Squircle {
        radius: segment.corner
        fillTop: segment.isChosen ? (segment.enabled ? Theme.chosenFill : Theme.track)
               : segment.down ? Theme.pressed : segment.hovered ? Theme.hover : "transparent"
        rimTop: segment.isChosen ? Theme.chosenRim : "transparent"
        rimBottom: rimTop
    }
    contentItem: Item {
        Row {
            anchors.centerIn: parent
            spacing: segment.iconGap

            Ico {
                anchors.verticalCenter: parent.verticalCenter
                visible: segment.iconName !== ""
                name: segment.iconName
                size: segment.iconSize
                color: segment.ink
            }
            Txt {
                id: label
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(Math.ceil(implicitWidth), segment.width - 2 * Theme.space2 - segment.iconRoom)
                text: segment.text
                size: Theme.metaSize
                font.weight: segment.isChosen ? Font.DemiBold : Font.Medium
                color: segment.ink
                elide: Text.ElideRight
                Accessible.ignored: true
            }
        }
    }
}
