import QtQuick
import Vorq
import Vorq.Native

// Rows on a card, with a title above and a remark below it.
Column {
    id: group

    property string title: ""
    property string remark: ""
    default property alias rows: column.data
    readonly property int sideRoom: 4

    spacing: Theme.space2
    Accessible.role: Accessible.Grouping
    Accessible.name: title
    Accessible.description: remark

    Txt {
        width: parent.width
        leftPadding: group.sideRoom
        rightPadding: group.sideRoom
        visible: text !== ""
        text: group.title
        size: Theme.metaSize
        font.weight: Font.DemiBold
        color: Theme.ink2
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Item {
        width: parent.width
        height: column.height

        Shadow {
            target: plate
            level: 1
        }
        Squircle {
            id: plate
            anchors.fill: parent
            radius: Theme.radiusCard
            fillTop: Theme.surface
            rimTop: Theme.hairline
            rimBottom: Theme.hairline2
        }
        Column {
            id: column
            width: parent.width
        }
    }
    Txt {
        width: parent.width
        leftPadding: group.sideRoom
        rightPadding: group.sideRoom
        visible: text !== ""
        text: group.remark
        size: Theme.captionSize
        leading: Theme.captionLeading
        color: Theme.ink2
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        Accessible.ignored: true
    }
}
