pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// Where the user writes: clips of what is attached, the draft, and the buttons beside it.
FocusScope {
    id: composer

    required property PanelViewModel panel
    property Item tabs: null // takes the keys of all controls first
    readonly property int padding: 10
    readonly property int buttonSize: 32
    readonly property int leastHeight: 52
    readonly property alias field: draft
    readonly property alias attachButton: attach
    readonly property alias sendButton: sender

    // A key that the draft has no use for. Whoever scrolls by it sets `accepted`.
    signal scrollWanted(event: QtObject)

    implicitHeight: Math.max(leastHeight, column.height + 2 * padding)
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Composer")

    // What Tab leads to, in its order.
    function stops(): var {
        return [draft.input, attach, ...(sender.enabled ? [sender] : []), ...signIn.stops(), ...waiting.stops(), ...clips.stops()]
    }
    // Files and pictures become clips.
    function paste() {
        if (!panel.intake.attachFromClipboard())
            draft.input.paste()
    }
    function focusPrompt() {
        draft.input.forceActiveFocus()
    }

    Shadow {
        visible: !Theme.dark
        target: composer
        level: 1
        radius: Theme.radiusComposer
    }
    Squircle {
        anchors.fill: parent
        radius: Theme.radiusComposer
        fillTop: Theme.fieldFill
        rimTop: draft.hasFocus ? Theme.fieldFocusRim : Theme.fieldRim
        rimBottom: rimTop
        rimWidth: !draft.hasFocus ? 1 : Theme.high ? Theme.focusThickness : 1.5
    }
    Column {
        id: column
        x: composer.padding
        y: composer.padding
        width: parent.width - 2 * composer.padding
        spacing: Theme.space2

        ClipTray {
            id: clips
            x: -ringRoom
            width: parent.width + 2 * ringRoom
            panel: composer.panel
            tabs: composer.tabs
            onKeyboardFreed: composer.focusPrompt()
        }
        WaitingNotice {
            id: waiting
            width: parent.width
            waiting: composer.panel.waiting
            tabs: composer.tabs
            onKeyboardFreed: composer.focusPrompt()
        }
        SignInNotice {
            id: signIn
            width: parent.width
            signIn: composer.panel.signIn
            tabs: composer.tabs
            onSettingsWanted: composer.panel.openSettings()
            // What had the keyboard goes with it.
            onVisibleChanged: if (!visible) composer.focusPrompt()
        }
        Txt {
            width: parent.width
            visible: text !== ""
            text: composer.panel.notice
            size: Theme.metaSize
            leading: Theme.captionLeading
            color: Theme.bad
            wrapMode: Text.Wrap
            leftPadding: Theme.space1
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        Item {
            width: parent.width
            height: Math.max(composer.buttonSize, draft.height)

            PromptField {
                id: draft
                x: composer.buttonSize + composer.padding
                width: parent.width - 2 * x
                height: Math.max(composer.buttonSize, implicitHeight)
                placeholder: composer.panel.promptPlaceholder
                next: attach
                tabs: composer.tabs
                onTextChanged: composer.panel.prompt = text
                onSubmitted: composer.panel.send()
                onRecallWanted: composer.panel.recallLastPrompt()
                onPasteWanted: event => event.accepted = composer.panel.intake.attachFromClipboard()
                onPasted: composer.paste()
                onScrollWanted: event => composer.scrollWanted(event)
                onCopyWanted: event => event.accepted = composer.panel.outlet.copyLastReply()
            }
            IconButton {
                id: attach
                anchors.bottom: parent.bottom
                size: composer.buttonSize
                iconName: "plus"
                iconRotation: composer.panel.tray.isShown ? 45 : 0
                look: IconButton.Soft
                checked: composer.panel.tray.isShown
                text: composer.panel.tray.isShown ? qsTr("Close") : qsTr("Add files or notes")
                help: composer.panel.tray.isShown ? qsTr("Close attachment options") : ""
                KeyNavigation.tab: sender.enabled ? sender : null
                tabs: composer.tabs
                onClicked: composer.panel.tray.isShown = !composer.panel.tray.isShown
            }
            IconButton {
                id: sender
                // A draft goes out by Enter meanwhile, and queues behind the running reply.
                readonly property bool stops: composer.panel.isResponding

                anchors.right: parent.right
                anchors.bottom: parent.bottom
                size: composer.buttonSize
                iconName: stops ? "stop" : "send"
                iconSize: stops ? 20 : 18
                look: stops ? IconButton.Soft : IconButton.Accent
                enabled: stops || (composer.panel.canSend && !composer.panel.waiting.isWaiting)
                text: stops ? qsTr("Stop") : qsTr("Send")
                help: stops ? qsTr("Stop response") : ""
                tabs: composer.tabs
                onClicked: {
                    if (stops)
                        composer.panel.stopPanelResponse()
                    else
                        composer.panel.send()
                    composer.focusPrompt()
                }
            }
        }
    }

    Connections {
        target: composer.panel
        function onPromptChanged() {
            if (draft.text !== composer.panel.prompt) {
                draft.text = composer.panel.prompt
                draft.input.cursorPosition = draft.text.length
            }
        }
        function onFocusPromptWanted() {
            composer.focusPrompt()
        }
        function onPromptBounceChanged() {
            if (composer.panel.promptBounce && !Motion.reduced)
                bounce.restart()
        }
    }
    Connections {
        target: composer.panel.intake
        function onTextPasted() {
            draft.input.paste()
        }
    }
    Component.onCompleted: draft.text = panel.prompt

    transform: Translate {
        id: shift
    }
    // A spring: it swings out and dies down within the bounce time.
    SequentialAnimation {
        id: bounce
        readonly property int part: Motion.bounce / 4

        NumberAnimation { target: shift; property: "x"; to: Motion.bounceReach; duration: bounce.part; easing.type: Easing.OutQuad }
        NumberAnimation { target: shift; property: "x"; to: -Motion.bounceReach * 0.65; duration: bounce.part; easing.type: Easing.InOutQuad }
        NumberAnimation { target: shift; property: "x"; to: Motion.bounceReach * 0.3; duration: bounce.part; easing.type: Easing.InOutQuad }
        NumberAnimation { target: shift; property: "x"; to: 0; duration: bounce.part; easing.type: Easing.InOutQuad }
    }
}
