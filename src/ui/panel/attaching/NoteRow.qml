import QtQuick
import Vorq
import Vorq.Native

// A note in the attach tray, with a circle that tells whether it is attached.
Control {
    id: row

    required property string title
    required property string detail
    required property bool isChecked
    readonly property bool hasMarks: true
    readonly property bool isMarked: isChecked
    readonly property int circle: 20
    readonly property int sideRoom: 12
    readonly property int textX: 44

    implicitHeight: Theme.grown(detail !== "" ? 52 : 44)
    role: Accessible.CheckBox
    text: title
    help: detail
    ringRadius: Theme.radiusRow
    ringGap: -Theme.ringGap
    Accessible.checkable: hasMarks
    Accessible.checked: isMarked

    background: Squircle {
        radius: Theme.radiusRow
        fillTop: row.down ? Theme.pressed : row.hovered ? Theme.hover : "transparent"
    }
    contentItem: Item {
        Rectangle {
            x: row.sideRoom
            anchors.verticalCenter: parent.verticalCenter
            width: row.circle
            height: row.circle
            radius: row.circle / 2
            color: row.isChecked ? Theme.accent : "transparent"
            border.width: row.isChecked ? 0 : 1.5
            border.color: Theme.ring

            Ico {
                anchors.centerIn: parent
                visible: row.isChecked
                name: "check"
                size: 13
                color: Theme.accentOn
            }
        }
        Column {
            x: row.textX
            width: parent.width - row.textX - row.sideRoom
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            Txt {
                width: parent.width
                text: row.title
                size: Theme.rowSize
                font.weight: Font.DemiBold
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            Txt {
                width: parent.width
                visible: text !== ""
                text: row.detail
                size: Theme.captionSize
                color: Theme.ink2
                elide: Text.ElideRight
                Accessible.ignored: true
            }
        }
    }
}
