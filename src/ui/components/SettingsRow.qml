import QtQuick
import Vorq
import Vorq.Native

// A row of a `SettingsGroup`: an icon or a picture, words, and controls at its end. A row that `leadsOn` is pressed
// as a whole. Where the controls leave the words no room they stand below them.
Control {
    id: row

    property string sub: ""
    property string iconName: ""
    property color tint: Theme.accentInk
    property Component picture: null // in place of the icon
    property bool leadsOn: false
    default property alias controls: trailing.data
    readonly property int sideRoom: 14
    readonly property int endRoom: 10
    readonly property int inset: 4
    readonly property int tileSize: Theme.grown(32)
    readonly property int iconSize: Theme.grown(18)
    readonly property int leastWords: Theme.grown(120)
    readonly property int chevronSize: Theme.grown(14)
    readonly property real textStart: picture ? sideRoom + lead.width + Theme.space3
                                    : iconName !== "" ? sideRoom + tileSize + sideRoom : sideRoom + 2
    readonly property real textEnd: sideRoom + (leadsOn ? chevronSize + Theme.space2 : 0)
    readonly property real room: width - textStart - textEnd // the most that controls may take
    readonly property real wordsBeside: room - (trailing.width > 0 ? trailing.width + Theme.space3 : 0)
    readonly property bool isStacked: trailing.width > 0 && wordsBeside < leastWords
    readonly property bool hasRule: !Positioner.isFirstItem

    implicitWidth: 400
    implicitHeight: Math.max(Theme.grown(52), content.height + 2 * endRoom)
    role: leadsOn ? Accessible.Button : Accessible.Grouping
    help: sub
    hoverEnabled: leadsOn
    focusPolicy: leadsOn ? Qt.TabFocus : Qt.NoFocus
    ringRadius: Theme.radiusRow
    ringGap: -Theme.ringGap - inset

    background: Item {
        Squircle {
            anchors.fill: parent
            anchors.margins: row.inset
            radius: Theme.radiusRow
            fillTop: !row.leadsOn ? "transparent" : row.down ? Theme.pressed : row.hovered ? Theme.hover : "transparent"
        }
        Rectangle {
            anchors.left: parent.left
            anchors.leftMargin: row.textStart
            anchors.right: parent.right
            anchors.rightMargin: row.sideRoom
            visible: row.hasRule
            height: 1
            color: Theme.hairline
        }
    }
    contentItem: Item {
        Squircle {
            anchors.left: parent.left
            anchors.leftMargin: row.sideRoom
            y: row.isStacked ? content.y : (parent.height - height) / 2 // beside the title
            visible: row.iconName !== ""
            width: row.tileSize
            height: row.tileSize
            radius: Theme.radiusControl
            fillTop: Theme.withAlpha(row.enabled ? row.tint : Theme.inkOff, Theme.tileAlpha)

            Ico {
                anchors.centerIn: parent
                name: row.iconName
                size: row.iconSize
                color: row.enabled ? row.tint : Theme.inkOff
            }
        }
        Loader {
            id: lead
            anchors.left: parent.left
            anchors.leftMargin: row.sideRoom
            y: row.isStacked ? content.y : (parent.height - height) / 2
            sourceComponent: row.picture
        }
        Item {
            id: content
            anchors.left: parent.left
            anchors.leftMargin: row.textStart
            anchors.right: parent.right
            anchors.rightMargin: row.textEnd
            anchors.verticalCenter: parent.verticalCenter
            height: row.isStacked ? words.height + Theme.space2 + trailing.height : Math.max(words.height, trailing.height)

            Column {
                id: words
                anchors.left: parent.left
                y: row.isStacked ? 0 : (parent.height - height) / 2
                width: row.isStacked ? parent.width : row.wordsBeside
                spacing: 2

                Txt {
                    width: parent.width
                    text: row.text
                    size: Theme.titleSize
                    font.weight: Font.Medium
                    color: row.enabled ? Theme.ink : Theme.inkOff
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignLeft
                    Accessible.ignored: true
                }
                Txt {
                    width: parent.width
                    visible: text !== ""
                    text: row.sub
                    size: Theme.metaSize
                    leading: Theme.captionLeading
                    color: row.enabled ? Theme.ink2 : Theme.inkOff
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignLeft
                    Accessible.ignored: true
                }
            }
            Row {
                id: trailing
                x: row.isStacked !== row.mirrored ? 0 : parent.width - width
                y: row.isStacked ? words.height + Theme.space2 : (parent.height - height) / 2
                spacing: Theme.space2
            }
        }
        Ico {
            anchors.right: parent.right
            anchors.rightMargin: row.sideRoom
            anchors.verticalCenter: parent.verticalCenter
            visible: row.leadsOn
            name: row.mirrored ? "back" : "fwd"
            size: row.chevronSize
            color: row.enabled ? Theme.ink3 : Theme.inkOff
        }
    }
}
