import QtQuick
import Vorq
import Vorq.Native

// A page of the Hub on its tape.
Control {
    id: segment

    required property string iconName
    required property bool isCurrent
    readonly property color ink: isCurrent ? Theme.accentInk : Theme.ink
    readonly property int sidePadding: 11
    readonly property int iconGap: 6
    readonly property int corner: 9

    implicitWidth: row.width + 2 * sidePadding
    implicitHeight: 30
    role: Accessible.PageTab
    ringRadius: corner
    ringGap: 0
    Accessible.selectable: true
    Accessible.selected: isCurrent

    background: Item {
        Squircle {
            anchors.fill: parent
            radius: segment.corner
            fillTop: segment.isCurrent ? Theme.accentSoft : segment.down ? Theme.pressed : segment.hovered ? Theme.hover : "transparent"
        }
        // The mark to read the tape by.
        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            y: parent.height - 5
            visible: segment.isCurrent
            width: 2
            height: 9
            radius: 1
            color: Theme.ember
        }
    }
    contentItem: Item {
        Row {
            id: row
            anchors.centerIn: parent
            spacing: segment.iconGap

            Ico {
                anchors.verticalCenter: parent.verticalCenter
                name: segment.iconName
                size: 16
                color: segment.isCurrent ? Theme.accentInk : Theme.ink2
            }
            Txt {
                anchors.verticalCenter: parent.verticalCenter
                visible: text !== ""
                text: segment.text
                font.weight: segment.isCurrent ? Font.DemiBold : Font.Medium
                color: segment.ink
                Accessible.ignored: true
            }
        }
    }
}
