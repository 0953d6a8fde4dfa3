import QtQuick
import Vorq

// Says at the foot of a page what was just done, with a way to undo it. It goes by itself, but not while
// the mouse or the keyboard is on it.
Item {
    id: toast

    property string words: ""
    property string action: qsTr("Undo") // "" for nothing to undo
    property bool isShown: false
    property int shownTime: 8000 // milliseconds
    readonly property Item holder: Window.activeFocusItem // of the keyboard
    readonly property KeyboardReturn keyboard: KeyboardReturn { hadRing: true } // it comes here by Tab
    readonly property int widest: Theme.grown(460)
    readonly property int sideRoom: 16
    readonly property int endRoom: 12
    readonly property int actionRoom: 8 // after the action, which has room of its own
    readonly property real padding: sideRoom + (undo.visible ? actionRoom : sideRoom)
    readonly property bool isHeld: hover.hovered || undo.activeFocus
    readonly property real textRoom: Math.min(widest, parent?.width ?? widest) - padding - (undo.visible ? undo.width + Theme.space3 : 0)

    signal undone

    function show(said: string) {
        words = said
        isShown = true
        due.restart()
        spoken.say(said)
    }
    function hide() {
        if (undo.activeFocus)
            keyboard.bringBack()
        isShown = false
        spoken.say("")
    }

    width: Math.min(widest, parent?.width ?? widest, Math.ceil(row.implicitWidth) + padding)
    height: Math.max(Theme.grown(48), label.height + 2 * endRoom)
    visible: opacity > 0
    enabled: isShown
    opacity: isShown ? 1 : 0
    Accessible.role: Accessible.Grouping
    Accessible.name: words
    Keys.onEscapePressed: hide()

    transform: Translate {
        y: toast.isShown ? 0 : Motion.enterRise

        Behavior on y {
            enabled: !Motion.reduced
            NumberAnimation { duration: Motion.enter; easing.type: Easing.OutCubic }
        }
    }
    Behavior on opacity {
        NumberAnimation { duration: Motion.enter; easing.type: Easing.OutCubic }
    }
    Timer {
        id: due
        interval: toast.shownTime
        onTriggered: if (!toast.isHeld) toast.hide()
    }
    onHolderChanged: if (holder && holder !== undo) keyboard.former = holder
    onIsHeldChanged: if (!isHeld && isShown) due.restart()

    Announcement {
        id: spoken
    }
    HoverHandler {
        id: hover
    }
    Glass {
        anchors.fill: parent
        floats: true
        radius: Theme.radiusCard
        elevation: 3
    }
    Row {
        id: row
        anchors.left: parent.left
        anchors.leftMargin: toast.sideRoom
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.space3

        Txt {
            id: label
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(Math.ceil(implicitWidth), toast.textRoom)
            text: toast.words
            font.weight: Font.Medium
            leading: Theme.captionLeading
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
        TextButton {
            id: undo
            anchors.verticalCenter: parent.verticalCenter
            visible: toast.action !== ""
            text: toast.action
            look: TextButton.Quiet
            onClicked: {
                toast.hide()
                toast.undone()
            }
        }
    }
}
