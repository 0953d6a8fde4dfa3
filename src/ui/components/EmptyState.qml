import QtQuick
import Vorq
import Vorq.Native

// What stands where there is nothing yet: why, and what can be done about it.
Item {
    id: empty

    required property string title
    property string sub: ""
    property string iconName: ""
    property string action: "" // "" for nothing to do
    readonly property int tileSize: Theme.grown(56)
    readonly property int iconSize: Theme.grown(28)
    readonly property int widest: 360
    readonly property real room: Math.min(width, widest)

    signal acted

    implicitWidth: widest
    implicitHeight: column.height
    Accessible.role: Accessible.Grouping
    Accessible.name: title
    Accessible.description: sub

    Column {
        id: column
        width: parent.width
        spacing: Theme.space2

        Squircle {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: empty.iconName !== ""
            width: empty.tileSize
            height: empty.tileSize
            radius: Theme.radiusCard
            fillTop: Theme.surface2
            rimTop: Theme.hairline
            rimBottom: Theme.hairline2

            Ico {
                anchors.centerIn: parent
                name: empty.iconName
                size: empty.iconSize
                color: Theme.ink2
            }
        }
        Txt {
            anchors.horizontalCenter: parent.horizontalCenter
            width: empty.room
            topPadding: Theme.space1
            text: empty.title
            size: Theme.displaySize
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Txt {
            anchors.horizontalCenter: parent.horizontalCenter
            width: empty.room
            visible: text !== ""
            text: empty.sub
            leading: Theme.bubbleLeading
            color: Theme.ink2
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: empty.action !== ""
            width: button.width
            height: button.height + Theme.space2

            TextButton {
                id: button
                y: Theme.space2
                width: Math.min(implicitWidth, empty.room)
                text: empty.action
                onClicked: empty.acted()
            }
        }
    }
}
