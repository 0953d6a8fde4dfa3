import QtQuick
import Vorq
import Vorq.Native

// A page of the walkthrough: a sign and a title, by which the window is moved, what it says, and its
// buttons below. Where it is higher than the screen the middle scrolls.
FocusScope {
    id: page

    required property string title
    property string iconName: "lockFill"
    property color tint: Theme.noteTile
    property bool isSmall: false // the sign stands beside the title
    property Item first: null // what gets the keyboard
    property real tallest: 100000
    default property alias content: pane.controls
    property alias actions: buttons.data
    readonly property alias pane: pane
    readonly property int edge: 24
    readonly property int topRoom: 28
    readonly property int gap: 22
    readonly property int tileSize: isSmall ? 40 : 72
    readonly property int badgeSize: isSmall ? 0 : 30
    readonly property real wanted: header.y + header.height + pane.contentHeight + gap + foot.height + edge

    signal helpWanted

    function takeKeyboard(reason: int) {
        const next = first ?? page.nextItemInFocusChain()
        next.forceActiveFocus(reason)
    }

    implicitHeight: Math.min(wanted, tallest)
    Keys.onPressed: event => pane.pressKey(event)

    Item {
        id: header
        x: page.edge
        y: page.topRoom
        width: page.width - 2 * page.edge
        height: Math.max(tile.height, heading.y + heading.height) + (page.isSmall ? Theme.space4 : 10)

        DragHandler {
            target: null
            onActiveChanged: if (active) header.Window.window.startSystemMove()
        }
        Squircle {
            id: tile
            x: page.isSmall ? (Theme.isMirrored ? parent.width - width : 0) : (parent.width - width) / 2
            width: page.tileSize
            height: width
            radius: page.isSmall ? 12 : 20
            fillTop: Theme.caseTop
            fillBottom: Theme.caseBottom
            rimTop: Theme.floatRimTop
            rimBottom: Theme.floatRimBottom
            hairline: Theme.floatHairline

            Ico {
                anchors.centerIn: parent
                name: page.iconName
                size: page.isSmall ? 22 : 34
                color: page.tint
            }
        }
        Squircle {
            x: tile.x + page.tileSize - 22
            y: page.tileSize - 22
            visible: !page.isSmall
            width: page.badgeSize
            height: width
            radius: 10
            fillTop: Theme.floatTop
            fillBottom: Theme.floatBottom
            rimTop: Theme.floatRimTop
            rimBottom: Theme.floatRimBottom
            hairline: Theme.floatHairline

            Ico {
                anchors.centerIn: parent
                name: "mark"
                size: 17
            }
        }
        Txt {
            id: heading
            x: page.isSmall ? (Theme.isMirrored ? 0 : page.tileSize + Theme.space3) : 0
            y: page.isSmall ? Math.max(0, (page.tileSize - height) / 2) : page.tileSize + 26
            width: parent.width - (page.isSmall ? page.tileSize + Theme.space3 : 0)
            horizontalAlignment: page.isSmall ? Text.AlignLeft : Text.AlignHCenter
            wrapMode: Text.Wrap
            text: page.title
            size: Theme.displaySize
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
    }
    ScrollPane {
        id: pane
        x: page.edge - ringRoom
        y: header.y + header.height - ringRoom
        width: page.width - 2 * x
        height: foot.y - page.gap + ringRoom - y
        spacing: Theme.space2
        scrolls: qsTr("Scroll the page")
    }
    Item {
        id: foot
        x: page.edge
        y: page.height - page.edge - height
        width: page.width - 2 * page.edge
        height: Math.max(help.height, buttons.height)

        IconButton {
            id: help
            x: Theme.isMirrored ? parent.width - width : 0
            anchors.verticalCenter: parent.verticalCenter
            visible: page.state !== "help"
            iconName: "help"
            look: IconButton.Soft
            text: qsTr("Help")
            onClicked: page.helpWanted()
        }
        Flow {
            id: buttons
            x: Theme.isMirrored ? 0 : help.width + Theme.space3
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - help.width - Theme.space3
            layoutDirection: Qt.RightToLeft // from the end of the line
            spacing: 10
        }
    }
}
