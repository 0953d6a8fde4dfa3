import QtQuick
import Vorq
import Vorq.Native

// Keeps a conversation at its end while the user is there, and where it is once they scroll up. What
// the user sends leads back to the end.
Item {
    id: following

    required property ListView view
    required property PanelViewModel panel
    required property bool isScrolled // by the scroller
    property bool follows: true
    property bool isResizing: false
    property bool isOpened: false // what was there before the view opened does not glide in
    property bool userSpoke: false // and is taken to what they said
    readonly property real slack: 2
    readonly property int resizeTime: 110
    readonly property real topY: view.originY - view.topMargin
    readonly property real bottomY: Math.max(topY, view.originY + view.contentHeight + view.bottomMargin - view.height)
    readonly property bool isAtEnd: view.contentY >= bottomY - slack
    readonly property bool glidesIn: isOpened && !isResizing && !panel.isRestoringHistory

    // Reckoned anew each time: a change of the height is told before bindings on it are.
    function end(): real {
        return Math.max(view.originY - view.topMargin, view.originY + view.contentHeight + view.bottomMargin - view.height)
    }
    function jump(animated: bool) {
        follows = true
        glide.stop()
        if (animated && !Motion.reduced && Math.abs(bottomY - view.contentY) < 3 * view.height) {
            glide.from = view.contentY
            glide.to = end()
            glide.start()
        } else {
            view.positionViewAtEnd()
            view.contentY = end()
        }
    }
    function hold() {
        glide.stop()
        follows = false
    }
    // After the user moved the view: at its end they want to see what comes.
    function settle() {
        follows = view.contentY >= end() - slack
    }
    function keepUp() {
        if (!follows || view.moving || isScrolled)
            return
        if (glide.running) {
            glide.to = end()
            return
        }
        view.contentY = end()
    }
    function scrollBy(step: real) {
        // Held first: messages that come into being above may be taller than was reckoned.
        hold()
        view.contentY = Math.max(topY, Math.min(bottomY, view.contentY + step))
        settle()
    }
    function messageCame() {
        const restored = panel.isRestoringHistory
        if (view.count > 0 && (restored || follows || userSpoke))
            jump(isOpened && !restored)
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

    Connections {
        target: following.view
        function onContentHeightChanged() {
            following.keepUp()
        }
        function onOriginYChanged() {
            following.keepUp()
        }
        function onHeightChanged() {
            following.resized()
        }
        function onWidthChanged() {
            following.resized()
        }
        function onMovementStarted() {
            glide.stop()
        }
        function onContentYChanged() {
            if (following.view.moving || following.isScrolled)
                following.settle()
        }
        function onMovementEnded() {
            following.settle()
        }
        function onCountChanged() {
            arrival.start()
        }
    }
    // A placeholder comes right after what the user sends, which is not the last message then.
    Connections {
        target: following.panel.messages
        function onRowsInserted(parent, first, last) {
            const messages = following.panel.messages
            for (let row = first; row <= last; ++row)
                if (messages.data(messages.index(row, 0), Qt.UserRole + 2) === "user")
                    following.userSpoke = true
        }
        // A conversation that begins anew is followed again.
        function onRowsRemoved() {
            if (following.panel.messages.rowCount() === 0)
                following.follows = true
        }
        function onModelReset() {
            following.follows = true
        }
    }
    // What is sent is waited for, wherever the user has scrolled to.
    Connections {
        target: following.panel
        function onComposerSent() {
            following.jump(true)
        }
    }
    // Once its item has a height.
    Timer {
        id: arrival
        interval: 0
        onTriggered: following.messageCame()
    }
    Timer {
        id: resizeEnd
        interval: following.resizeTime
        onTriggered: {
            following.isResizing = false
            following.keepUp()
        }
    }
    NumberAnimation {
        id: glide
        target: following.view
        property: "contentY"
        duration: Motion.move
        easing.type: Easing.OutCubic
        onFinished: following.keepUp()
    }
}
