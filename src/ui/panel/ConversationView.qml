pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Vorq
import Vorq.Native

// The messages, and how the user scrolls through them.
ListView {
    id: list

    required property PanelViewModel panel
    required property Item container
    property Item tabs: null // takes the keys of all controls first
    readonly property int sideRoom: 6
    readonly property int firstRoom: 14
    readonly property int lastRoom: 24
    readonly property int columnWidth: 720
    readonly property real content: Math.min(width - 2 * sideRoom, columnWidth)
    readonly property int keyStep: 60
    readonly property int revealRoom: 32 // above it fade the edges
    property bool isDockDragging: false // the whole panel is on its way to another dock
    property alias follows: following.follows
    readonly property alias topY: following.topY
    readonly property alias bottomY: following.bottomY
    readonly property alias endSlack: following.slack
    readonly property alias isAtEnd: following.isAtEnd

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

    function jumpToEnd(animated: bool) {
        following.jump(animated)
    }
    // What Tab leads to, from the end upwards.
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
        following.scrollBy(y - contentY)
    }
    function isWithin(item: Item): bool {
        for (let each = item; each; each = each.parent)
            if (each === contentItem)
                return true
        return false
    }
    function scrollByKey(event) {
        const page = height - keyStep
        const steps = ({ [Qt.Key_PageUp]: -page, [Qt.Key_PageDown]: page, [Qt.Key_Up]: -keyStep, [Qt.Key_Down]: keyStep })
        if (event.key in steps && event.modifiers === Qt.NoModifier)
            following.scrollBy(steps[event.key])
        else if (event.key === Qt.Key_Home && event.modifiers === Qt.ControlModifier)
            following.scrollBy(topY - contentY)
        else if (event.key === Qt.Key_End && event.modifiers === Qt.ControlModifier)
            jumpToEnd(false)
        else
            return
        event.accepted = true
    }

    Keys.onPressed: event => scrollByKey(event)
    onContentXChanged: contentX = lock.snappedX(contentX)

    FollowEnd {
        id: following
        parent: list
        view: list
        panel: list.panel
        isScrolled: scroller.pressed
    }
    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        blocking: false
        onWheel: event => {
            const isUp = event.angleDelta.y > 0 || event.pixelDelta.y > 0
            if (isUp && list.bottomY > list.topY)
                following.hold()
        }
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

    delegate: MessageDelegate {
        id: entry
        width: list.width
        columnWidth: list.content
        panel: list.panel
        container: list.container
        tabs: list.tabs
        viewTop: list.contentY - (entry?.y ?? 0)
        viewHeight: list.height
        glidesIn: following.glidesIn
        // The bubble stays where it is, and what was sent comes in below.
        onUnfolding: following.hold()
        onCaretMoved: (text, caret) => list.revealPart(text, caret)
    }
}
