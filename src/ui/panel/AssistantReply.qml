pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// The assistant's block: as wide as its text for one line, as wide as the list for more.
Item {
    id: reply

    required property string message
    required property bool isWorking
    required property bool isTyping
    required property string workLabel
    required property PanelSelectionBridge selection
    required property Item container
    property Item tabs: null // takes the keys of all controls first
    // What is in view of this item, from its top.
    property real viewTop: 0
    property real viewHeight: 0
    readonly property int sidePadding: 16
    readonly property int endPadding: 14
    readonly property int lineEndPadding: 11
    readonly property int barsGap: 10
    readonly property int oneLineHeight: Theme.grown(26)
    readonly property bool isOneLine: isWorking || (blocks.height <= oneLineHeight && !blocks.beginsWithCode
                                      && blocks.naturalWidth < width - 2 * sidePadding)
    readonly property bool showsBars: isTyping && !isWorking && !isOneLine
    readonly property real innerHeight: isWorking ? working.height : blocks.height + (showsBars ? barsGap + bars.height : 0)
    readonly property real padding: isOneLine ? lineEndPadding : endPadding
    readonly property alias view: blocks

    function openMenu(at: point, byKey: bool) {
        const nothing = !blocks.hasSelection
        menu.open(blocks, at, [
            { text: qsTr("Deepen"), off: !reply.selection.hasSelection || nothing, act: () => reply.selection.commitDeepen() },
            {},
            { text: qsTr("Copy"), off: nothing, act: () => blocks.copy() },
            { text: qsTr("Copy reply"), act: () => App.panel.outlet.copyText(reply.message) },
            {},
            { text: qsTr("Select All"), act: () => blocks.selectAll() }
        ], byKey)
    }

    signal caretMoved(Item text, rect caret)

    // What Tab leads to, in its order.
    function stops(): var {
        if (isWorking)
            return []
        const copies = Array.from({ length: codeCopies.count }, (none, i) => codeCopies.itemAt(i))
        return [blocks, ...copies, ...(replyCopy.visible ? [replyCopy] : [])]
    }

    implicitHeight: innerHeight + 2 * padding
    Accessible.role: Accessible.ListItem
    Accessible.name: qsTr("Vorq: %1").arg(isWorking || isTyping ? workLabel : blocks.spoken)

    // Painted by the processor, so no more of it than is in view; the corners of a part are not.
    Squircle {
        id: plate

        readonly property int cornerRoom: 64
        readonly property int step: 256
        readonly property real end: Math.min(reply.height, Math.ceil((reply.viewTop + reply.viewHeight + cornerRoom) / step) * step)

        y: Math.max(0, Math.floor((reply.viewTop - cornerRoom) / step) * step)
        visible: height > 0
        width: !reply.isOneLine ? reply.width : 2 * reply.sidePadding + (reply.isWorking ? working.width : Math.ceil(blocks.naturalWidth))
        height: Math.max(0, end - y)
        radius: Theme.radiusBlock
        fillTop: Theme.botBlock
        rimTop: Theme.botBlockRim
        rimBottom: Theme.botBlockRim
    }
    // Round all of the bubble, of which the plate may be a part.
    Item {
        width: plate.width
        height: reply.height

        FocusRing {
            visible: blocks.visualFocus
            around: Theme.radiusBlock
        }
    }
    WorkingLine {
        id: working
        x: reply.sidePadding
        y: reply.lineEndPadding
        visible: reply.isWorking
        label: reply.workLabel
    }
    ReplyView {
        id: blocks
        x: reply.sidePadding
        y: reply.padding
        width: reply.width - 2 * reply.sidePadding
        height: implicitHeight
        visible: !reply.isWorking
        raw: reply.isWorking ? "" : reply.message
        baseColor: Theme.botInk
        linkColor: Theme.botLink
        selectionColor: Theme.selection
        hasHighContrast: Theme.high
        textScale: Theme.look.textScale
        viewTop: reply.viewTop - y
        viewHeight: reply.viewHeight
        isGrowing: reply.isTyping
        arrivalDuration: Motion.arrival
        bridge: reply.selection
        container: reply.container
        activeFocusOnTab: true
        Keys.forwardTo: reply.tabs ? [reply.tabs] : []
        Keys.onPressed: event => {
            if (!menu.isAskedForBy(event))
                return
            reply.openMenu(menuPlace(), true)
            event.accepted = true
        }
        onLinkActivated: address => App.panel.outlet.openLink(address)
        onCaretChanged: if (caret.height > 0) reply.caretMoved(blocks, caret)
        Accessible.role: Accessible.Document // which is what makes it an element; it tells the rest itself

        TapHandler {
            acceptedButtons: Qt.RightButton
            onTapped: point => reply.openMenu(point.position, false)
        }
        Rectangle {
            visible: blocks.caret.height > 0
            x: blocks.caret.x - 1
            y: blocks.caret.y
            width: 2
            height: blocks.caret.height
            radius: 1
            color: Theme.botLink
        }
    }
    TextMenu {
        id: menu
    }
    Repeater {
        id: codeCopies
        model: blocks.codes

        // On the edge of the plate, between the lines above and its own.
        CopyButton {
            id: codeCopy

            required property int number
            required property rect plateRect
            readonly property bool isBesideOther: number === 0 && blocks.beginsWithCode && replyCopy.visible

            x: (isBesideOther ? replyCopy.x : blocks.x + plateRect.x + plateRect.width) - width - Theme.space1
            y: blocks.y + plateRect.y - height / 2
            size: 26
            slack: 3
            iconSize: 12
            text: qsTr("Copy code")
            tabs: reply.tabs
            shown: hover.hovered && inCode(hover.point.position.y)
            onClicked: blocks.copyCode(number)

            function inCode(y: real): bool {
                return y >= blocks.y + plateRect.y && y <= blocks.y + plateRect.y + plateRect.height
            }
        }
    }
    // On the edge of the bubble, above its first line.
    CopyButton {
        id: replyCopy
        tabs: reply.tabs
        x: plate.width - width - Theme.space4
        y: -height / 2
        visible: !reply.isWorking && !reply.isTyping && !reply.isOneLine
        text: qsTr("Copy reply")
        shown: hover.hovered
        onClicked: App.panel.outlet.copyText(reply.message)
    }
    WorkingLine {
        id: bars
        x: reply.sidePadding
        y: reply.height - reply.padding - height
        visible: reply.showsBars
        scale: 0.9
        transformOrigin: Item.Left
    }
    HoverHandler {
        id: hover
    }
}
