import QtQuick
import Vorq
import Vorq.Native

// A choice in the attach tray.
Control {
    id: row

    required property string iconName
    property string sub: ""
    property bool leadsOn: false
    property color tint: Theme.accentInk
    readonly property int tileInset: 8
    readonly property int tileSize: 34
    readonly property int textX: 54
    readonly property int sideRoom: 40
    readonly property int endRoom: 8

    implicitHeight: Math.max(Theme.grown(sub !== "" ? 52 : 44), words.height + 2 * endRoom)
    tip: help
    ringRadius: Theme.radiusRow
    ringGap: -Theme.ringGap
    Accessible.description: sub !== "" ? sub : help

    background: Squircle {
        radius: Theme.radiusRow
        fillTop: row.down ? Theme.pressed : row.hovered ? Theme.hover : "transparent"
    }
    contentItem: Item {
        Squircle {
            x: row.tileInset
            anchors.verticalCenter: parent.verticalCenter
            width: row.tileSize
            height: row.tileSize
            radius: Theme.radiusTile
            fillTop: Theme.withAlpha(row.tint, Theme.tileAlpha)

            Ico {
                anchors.centerIn: parent
                name: row.iconName
                color: row.tint
            }
        }
        Column {
            id: words
            x: row.textX
            width: parent.width - row.textX - row.sideRoom
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            Txt {
                width: parent.width
                text: row.text
                size: Theme.rowSize
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
            Txt {
                width: parent.width
                visible: text !== ""
                text: row.sub
                size: Theme.captionSize
                color: Theme.ink2
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
        }
        Ico {
            visible: row.leadsOn
            anchors.right: parent.right
            anchors.rightMargin: Theme.space3
            anchors.verticalCenter: parent.verticalCenter
            name: "fwd"
            size: 14
            color: Theme.ink3
        }
    }
}
