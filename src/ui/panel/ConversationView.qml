pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Vorq
import Vorq.Native

// The messages. It follows the end of the conversation while the user is there, and holds still
// once they scroll up.
ListView {
    id: list

    required property PanelViewModel panel
    required property Item container
    property Item tabs: null // takes the keys of all controls first
    readonly property int sideRoom: 6
    readonly property int firstRoom: 14
    readonly property int lastRoom: 24
    readonly property int columnWidth: 720
    readonly property int wideBubble: 480
    readonly property int narrowBubble: 316
    readonly property int wideFrom: 620
    readonly property real content: Math.min(width - 2 * sideRoom, columnWidth)
    readonly property real topY: originY - topMargin
    readonly property real bottomY: Math.max(topY, originY + contentHeight + bottomMargin - height)
    readonly property real endSlack: 2
    readonly property int resizeTime: 110
    readonly property int keyStep: 60
    readonly property int revealRoom: 32 // above it fade the edges
    property bool isDockDragging: false // the whole panel is on its way to another dock
    property bool follows: true
    property bool isResizing: false
    property bool isOpened: false // what was there before the list opened does not glide in
    property bool userSpoke: false // and is taken to what they said
    readonly property bool isAtEnd: contentY >= bottomY - endSlack

    model: panel.messages
    // No message is the current one; the mark of it would glide through a long conversation for
    // minutes, unseen, and have a frame drawn for each step.
    currentIndex: -1
    highlightFollowsCurrentItem: false
    spacing: Theme.space3
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.VerticalFlick
    reuseItems: false
    clip: true
    cacheBuffer: 1200
    topMargin: firstRoom
    bottomMargin: lastRoom
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Conversation")

    // Reckoned anew each time: a change of the height is told before bindings on it are.
    function end(): real {
        return Math.max(originY - topMargin, originY + contentHeight + bottomMargin - height)
    }
    function jumpToEnd(animated: bool) {
        follows = true
        glide.stop()
        if (animated && !Motion.reduced && Math.abs(bottomY - contentY) < 3 * height) {
            glide.from = contentY
            glide.to = end()
            glide.start()
        } else {
            positionViewAtEnd()
            contentY = end()
        }
    }
    // What Tab leads to: from the end upwards, and labels before their reply.
    function stops(): var {
        const upwards = Array.from({ length: count }, (none, i) => itemAtIndex(count - 1 - i))
        return upwards.filter(item => item).reduce((all, item) => [...all, ...item.stops()], [])
    }
    function reveal(item: Item) {
        if (isWithin(item))
            revealPart(item, Qt.rect(0, 0, item.width, item.height))
    }
    // Scrolls no further than it takes to see the part, or an end of one that is too tall.
    function revealPart(item: Item, part: rect) {
        const at = item.mapToItem(contentItem, 0, part.y)
        const top = at.y - revealRoom
        const bottom = at.y + part.height + revealRoom
        let y = contentY
        if (bottom - top > height)
            y = bottom <= contentY + revealRoom ? bottom - height : top >= contentY + height - revealRoom ? top : contentY
        else if (top < contentY)
            y = top
        else if (bottom > contentY + height)
            y = bottom - height
        scrollBy(y - contentY)
    }
    function isWithin(item: Item): bool {
        for (let each = item; each; each = each.parent)
            if (each === contentItem)
                return true
        return false
    }
    function hold() {
        glide.stop()
        follows = false
    }
    // After the user moved the list: at its end they want to see what comes.
    function settle() {
        follows = contentY >= end() - endSlack
    }
    function keepUp() {
        if (!follows || moving || scroller.pressed)
            return
        if (glide.running) {
            glide.to = end()
            return
        }
        contentY = end()
    }
    function scrollBy(step: real) {
        // Held first: messages that come into being above may be taller than was reckoned.
        hold()
        contentY = Math.max(topY, Math.min(bottomY, contentY + step))
        settle()
    }

    onContentHeightChanged: keepUp()
    onOriginYChanged: keepUp()
    onHeightChanged: resized()
    onWidthChanged: resized()
    onMovementStarted: glide.stop()
    onContentYChanged: if (moving || scroller.pressed) settle()
    onMovementEnded: settle()
    onCountChanged: arrival.start()

    function messageCame() {
        const restored = panel.isRestoringHistory
        if (count > 0 && (restored || follows || userSpoke))
            jumpToEnd(isOpened && !restored)
        userSpoke = false
        isOpened = true
        if (restored)
            panel.historyRestored()
    }
    function resized() {
        isResizing = true
        resizeEnd.restart()
        keepUp()
    }

    // A placeholder comes right after what the user sends, which is not the last message then.
    Connections {
        target: list.panel.messages
        function onRowsInserted(parent, first, last) {
            for (let row = first; row <= last; ++row)
                if (list.panel.messages.data(list.panel.messages.index(row, 0), Qt.UserRole + 2) === "user")
                    list.userSpoke = true
        }
        // A conversation that begins anew is followed again.
        function onRowsRemoved() {
            if (list.panel.messages.rowCount() === 0)
                list.follows = true
        }
        function onModelReset() {
            list.follows = true
        }
    }
    // What is sent is waited for, wherever the user has scrolled to.
    Connections {
        target: list.panel
        function onComposerSent() {
            list.jumpToEnd(true)
        }
    }
    // Once its item has a height.
    Timer {
        id: arrival
        interval: 0
        onTriggered: list.messageCame()
    }
    Timer {
        id: resizeEnd
        interval: list.resizeTime
        onTriggered: {
            list.isResizing = false
            list.keepUp()
        }
    }
    NumberAnimation {
        id: glide
        target: list
        property: "contentY"
        duration: Motion.move
        easing.type: Easing.OutCubic
        onFinished: list.keepUp()
    }
    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        blocking: false
        onWheel: event => {
            if (event.angleDelta.y > 0 || event.pixelDelta.y > 0) {
                if (list.bottomY > list.topY)
                    list.hold()
            }
        }
    }

    Keys.onPressed: event => scrollByKey(event)

    function scrollByKey(event) {
        const page = height - keyStep
        const steps = ({ [Qt.Key_PageUp]: -page, [Qt.Key_PageDown]: page, [Qt.Key_Up]: -keyStep, [Qt.Key_Down]: keyStep })
        if (event.key in steps && event.modifiers === Qt.NoModifier)
            scrollBy(steps[event.key])
        else if (event.key === Qt.Key_Home && event.modifiers === Qt.ControlModifier)
            scrollBy(topY - contentY)
        else if (event.key === Qt.Key_End && event.modifiers === Qt.ControlModifier)
            jumpToEnd(false)
        else
            return
        event.accepted = true
    }

    T.ScrollBar.vertical: Scroller {
        id: scroller
        scrolls: qsTr("Scroll the conversation")
        shown: lock.isScrollerHovered && list.bottomY > list.topY
    }
    ScrollLock {
        id: lock
        parent: list
        view: list
        scroller: scroller
        isDockDragging: list.isDockDragging
    }
    onContentXChanged: contentX = lock.snappedX(contentX)

    delegate: Item {
        id: entry

        required property int index
        required property string messageRole
        required property string text
        required property bool isWorking
        required property bool isTyping
        required property string followUpQuestion
        required property list<string> followUpLabels
        required property string sentText
        required property string sentApplication
        required property var messageId
        required property bool canRetry
        readonly property bool isUser: messageRole === "user"
        readonly property bool hasFollowUp: !isUser && !isTyping && !isWorking && (followUpQuestion !== "" || followUpLabels.length > 0)

        function stops(): var {
            return [...(retries.itemAt(0)?.stops() ?? []), ...(followUps.itemAt(0)?.stops() ?? []),
                    ...(replies.itemAt(0)?.stops() ?? []), ...(bubbles.itemAt(0)?.stops() ?? [])]
        }

        width: list.width
        height: body.height
        // No transition of the list: while one runs, its item does not make way for what grows.
        ListView.onAdd: if (list.isOpened && !list.isResizing && !list.panel.isRestoringHistory) arriving.start()

        NumberAnimation {
            id: arriving
            target: entry
            property: "opacity"
            from: 0
            to: 1
            duration: Motion.enter
            easing.type: Easing.OutCubic
        }

        Column {
            id: body
            x: (list.width - width) / 2
            width: list.content
            spacing: list.sideRoom

            // One of these stands; a repeater makes no item that is not wanted.
            Repeater {
                id: bubbles
                model: entry.isUser ? 1 : 0

                UserBubble {
                    width: list.content
                    message: entry.text
                    sentText: entry.sentText
                    sentApplication: entry.sentApplication
                    tabs: list.tabs
                    // The bubble stays where it is, and what was sent comes in below.
                    onUnfolding: list.hold()
                    widest: list.content > list.wideFrom ? list.wideBubble : list.narrowBubble
                }
            }
            Repeater {
                id: replies
                model: entry.isUser ? 0 : 1

                AssistantReply {
                    width: list.content
                    message: entry.text
                    isWorking: entry.isWorking
                    isTyping: entry.isTyping
                    workLabel: list.panel.workLabel
                    selection: list.panel.selection
                    onCaretMoved: (text, caret) => list.revealPart(text, caret)
                    container: list.container
                    tabs: list.tabs
                    viewTop: list.contentY - (entry?.y ?? 0)
                    viewHeight: list.height
                }
            }
            Repeater {
                id: retries
                model: entry.canRetry && !entry.isWorking && !entry.isTyping ? 1 : 0

                TextButton {
                    id: again
                    text: qsTr("Try again")
                    help: qsTr("Sends the same again, with all that went with it")
                    tabs: list.tabs
                    onClicked: list.panel.retry(entry.messageId)

                    function stops(): var {
                        return [again]
                    }
                }
            }
            Repeater {
                id: followUps
                model: entry.hasFollowUp ? 1 : 0

                FollowUp {
                    width: list.content
                    question: entry.followUpQuestion
                    labels: entry.followUpLabels
                    tabs: list.tabs
                    onChosen: label => list.panel.submitLabel(label)
                }
            }
        }
    }
}
