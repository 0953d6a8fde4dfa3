import QtQuick
import QtQuick.Templates as T
import Vorq

// A question or a form over its page, which waits meanwhile. Return accepts, Escape and a press beside it
// reject; Tab stays within it, arrows and Page keys scroll it, and the keyboard goes back where it was.
T.Popup {
    id: sheet

    required property string title
    property string text: "" // "" for a sheet of controls alone
    property string acceptText: qsTr("OK")
    property string rejectText: qsTr("Cancel")
    property bool isDanger: false // what is accepted cannot be undone, and Return does not do it
    property bool canAccept: true
    property bool isAccepted: false
    readonly property KeyboardReturn keyboard: KeyboardReturn {
        watched: sheet.parent
    }
    default property alias controls: pane.controls
    readonly property int widest: Theme.grown(440)
    readonly property int padRoom: Theme.space6
    readonly property int edgeRoom: 16 // to the edges of the window
    readonly property real tallest: (parent?.height ?? 0) - 2 * edgeRoom

    signal accepted
    signal rejected

    function accept() {
        if (!canAccept)
            return
        isAccepted = true
        close()
    }
    function pressKey(event) {
        const isReturn = event.key === Qt.Key_Return || event.key === Qt.Key_Enter
        event.accepted = isReturn && !isDanger
        if (!event.accepted)
            pane.pressKey(event)
        else if (!event.isAutoRepeat)
            accept()
    }

    parent: T.Overlay.overlay
    x: Math.round(((parent?.width ?? 0) - width) / 2)
    y: Math.round(((parent?.height ?? 0) - height) / 2)
    width: Math.min(widest, (parent?.width ?? 0) - 2 * edgeRoom)
    height: Math.min(tallest, heading.height + pane.contentHeight + foot.height + 2 * padRoom + 2 * Theme.space4)
    modal: true
    dim: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    onAboutToShow: {
        isAccepted = false
        pane.scrollTo(0)
        keyboard.remember(parent)
    }
    onClosed: {
        keyboard.bringBack()
        if (isAccepted)
            accepted()
        else
            rejected()
    }
    onOpened: {
        const first = isDanger ? cancel : pane.body.children.length > 1 ? pane.body.nextItemInFocusChain() : ok
        first.forceActiveFocus(Qt.TabFocusReason)
    }

    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }
    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Motion.enter; easing.type: Easing.OutCubic }
    }
    background: Glass {
        floats: true
        radius: Theme.radiusSheet
        elevation: 4
    }
    contentItem: FocusScope {
        LayoutMirroring.enabled: Theme.isMirrored
        LayoutMirroring.childrenInherit: true
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.title
        Accessible.description: sheet.text
        Keys.onPressed: event => sheet.pressKey(event)

        Txt {
            id: heading
            x: sheet.padRoom
            y: sheet.padRoom
            width: parent.width - 2 * sheet.padRoom
            text: sheet.title
            size: Theme.displaySize
            font.weight: Font.Bold
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        ScrollPane {
            id: pane
            x: sheet.padRoom - ringRoom
            y: heading.y + heading.height + Theme.space4 - ringRoom
            width: parent.width - 2 * x
            height: foot.y - Theme.space4 + ringRoom - y
            spacing: Theme.space4
            scrolls: qsTr("Scroll the sheet")

            Txt {
                width: parent.width
                visible: text !== ""
                text: sheet.text
                leading: Theme.bubbleLeading
                color: Theme.ink2
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        Flow {
            id: foot
            x: sheet.padRoom
            y: parent.height - sheet.padRoom - height
            width: parent.width - 2 * sheet.padRoom
            layoutDirection: Qt.RightToLeft // from the end of the line
            spacing: Theme.space2

            TextButton {
                id: ok
                width: Math.min(implicitWidth, foot.width)
                text: sheet.acceptText
                look: sheet.isDanger ? TextButton.Danger : TextButton.Primary
                enabled: sheet.canAccept
                size: 36
                onClicked: sheet.accept()
            }
            TextButton {
                id: cancel
                width: Math.min(implicitWidth, foot.width)
                visible: text !== ""
                text: sheet.rejectText
                size: 36
                onClicked: sheet.close()
            }
        }
    }
}
