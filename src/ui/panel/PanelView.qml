import QtQuick
import Vorq
import Vorq.Native

// What the floating panel shows: the conversation and, below it, the composer.
FocusScope {
    id: view

    readonly property PanelViewModel panel: App.panel
    readonly property int edge: 12
    readonly property int listEdge: 8
    readonly property int listTop: 10
    readonly property int fadeHeight: 28
    readonly property int trayGap: 8
    readonly property int composerWidest: 760
    readonly property real composerHeight: composer.height
    readonly property alias conversation: list
    readonly property alias composerItem: composer
    readonly property alias trayItem: tray

    property bool isDockDragging: false

    width: 440
    height: 750
    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Vorq")

    function focusPrompt() {
        composer.focusPrompt()
    }

    // What is typed while something else has the keyboard belongs to the draft.
    // What had the keyboard may have been scrolled away.
    Keys.onTabPressed: composer.focusPrompt()
    Keys.onBacktabPressed: composer.focusPrompt()
    Keys.onPressed: event => {
        const isTyped = event.text.trim() !== "" && event.text >= " " && event.text !== "\u007f"
                      && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))
        const isPaste = event.matches(StandardKey.Paste)
        if (!composer.field.hasFocus && !isTyped && !isPaste)
            list.scrollByKey(event)
        if (composer.field.hasFocus || (!isTyped && !isPaste))
            return
        event.accepted = true
        composer.focusPrompt()
        if (isTyped)
            composer.field.input.insert(composer.field.input.cursorPosition, event.text)
        else
            composer.paste()
    }

    Glass {
        id: glass
        anchors.fill: parent
    }
    ConversationView {
        id: list
        x: view.listEdge
        y: view.listTop
        width: parent.width - 2 * view.listEdge
        height: (held.visible ? held.y - view.trayGap : composer.y) - y
        panel: view.panel
        container: view
        isDockDragging: view.isDockDragging
        tabs: tabs
    }
    PlateFade {
        x: view.edge
        y: view.listTop - 1
        width: parent.width - 2 * view.edge
        height: view.fadeHeight
        visible: !Theme.high && list.contentY > list.topY + list.endSlack
        plate: glass.plate
    }
    PlateFade {
        x: view.edge
        y: list.y + list.height - view.fadeHeight
        width: parent.width - 2 * view.edge
        height: view.fadeHeight + 1
        visible: !Theme.high
        plate: glass.plate
        solidAtTop: false
    }
    JumpToLatest {
        id: jump
        Keys.forwardTo: [tabs]
        x: (parent.width - width) / 2
        y: list.y + list.height - height - view.edge
        wanted: !list.follows && !list.isAtEnd && !view.panel.tray.isShown
        onClicked: {
            list.jumpToEnd(true)
            // It goes, and must not take the keyboard with it.
            if (activeFocus)
                view.focusPrompt()
        }
    }
    DeepenPill {
        selection: view.panel.selection
        lowest: list.y + list.height
    }
    HeldCard {
        id: held
        x: composer.x
        y: composer.y - view.trayGap - height
        width: composer.width
        height: implicitHeight
        panel: view.panel
        tabs: tabs
        onKeyboardFreed: view.focusPrompt()
    }

    // A press outside the tray closes it, and still does what it was meant to.
    OutsidePress {
        enabled: view.panel.tray.isShown
        area: tray
        opener: composer.attachButton
        onPressed: view.panel.tray.isShown = false
    }
    AttachTray {
        id: tray
        x: composer.x
        y: Math.max(view.edge, composer.y - view.trayGap - height) + rise
        width: composer.width
        height: Math.min(implicitHeight, Math.max(leastHeight, composer.y - view.trayGap - view.edge))
        panel: view.panel
        tabs: tabs
        visible: opacity > 0
        opacity: view.panel.tray.isShown ? 1 : 0

        property real rise: view.panel.tray.isShown ? 0 : Motion.enterRise

        Behavior on opacity {
            NumberAnimation { duration: Motion.enter; easing.type: Easing.OutCubic }
        }
        Behavior on rise {
            enabled: !Motion.reduced
            NumberAnimation { duration: Motion.enter; easing.type: Easing.OutCubic }
        }
    }
    Composer {
        id: composer
        x: (parent.width - width) / 2
        y: parent.height - view.edge - height
        width: Math.min(parent.width - 2 * view.edge, view.composerWidest)
        focus: true
        panel: view.panel
        tabs: tabs
        onScrollWanted: event => list.scrollByKey(event)
    }
    TabChain {
        id: tabs
        composer: composer
        conversation: list
        jump: jump
        held: held
        tray: tray
    }
    Announcer {
        panel: view.panel
    }
    DropZone {
        anchors.fill: parent
        intake: view.panel.intake
    }
}
