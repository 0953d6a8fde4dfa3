import QtQuick
import Vorq
import Vorq.Native

// The draft: grows to five lines, then scrolls. Enter sends, Shift with Enter breaks the line.
Flickable {
    id: field

    required property string placeholder
    property Item next: null // where Tab leads
    property Item tabs: null // takes the keys first
    property alias text: edit.text
    property alias input: edit
    property real size: Theme.bodySize
    readonly property bool hasFocus: edit.activeFocus
    readonly property int mostLines: 5
    readonly property int endPadding: 6
    readonly property int caretRoom: 3 // before what stands in for the draft
    readonly property real lineHeight: Math.ceil(metrics.height) + Theme.bubbleLeading
    readonly property real tallest: mostLines * lineHeight - Theme.bubbleLeading + 2 * endPadding

    signal submitted
    signal recallWanted
    // Whoever takes what is on the clipboard sets `accepted`.
    signal pasteWanted(event: QtObject)
    // The same, from the menu, which can paste more than text.
    signal pasted
    // A key that would move through a text, and cannot in this one. Whoever scrolls by it sets `accepted`.
    signal scrollWanted(event: QtObject)
    // Nothing is selected here that could be copied. Whoever knows what to copy sets `accepted`.
    signal copyWanted(event: QtObject)
    // By any button, before anything comes of it.
    signal pressed

    implicitHeight: Math.min(contentHeight, tallest)
    contentWidth: width
    contentHeight: Math.max(edit.implicitHeight, lineHeight) - Theme.bubbleLeading + 2 * endPadding
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.VerticalFlick
    clip: interactive

    function showCursor() {
        const caret = edit.cursorRectangle
        if (caret.y < contentY)
            contentY = caret.y
        else if (caret.y + caret.height + 2 * endPadding > contentY + height)
            contentY = caret.y + caret.height + 2 * endPadding - height
    }

    function isAtEnd(key: int): bool {
        return edit.selectedText === "" && edit.cursorPosition === (key === Qt.Key_Home ? 0 : edit.length)
    }
    function openMenu(at: point, byKey: bool) {
        edit.forceActiveFocus()
        const nothing = edit.selectedText === ""
        menu.open(edit, at, [
            { text: qsTr("Undo"), off: !edit.canUndo, act: () => edit.undo() },
            { text: qsTr("Redo"), off: !edit.canRedo, act: () => edit.redo() },
            {},
            { text: qsTr("Cut"), off: nothing, act: () => edit.cut() },
            { text: qsTr("Copy"), off: nothing, act: () => edit.copy() },
            { text: qsTr("Paste"), act: () => field.pasted() },
            {},
            { text: qsTr("Select All"), off: edit.text === "", act: () => edit.selectAll() }
        ], byKey)
    }

    TextMenu {
        id: menu
    }
    FontMetrics {
        id: metrics
        font: edit.font
    }

    TextEdit {
        id: edit
        y: field.endPadding
        width: field.width
        height: Math.max(implicitHeight, field.height - 2 * field.endPadding)
        focus: true
        activeFocusOnTab: true
        textFormat: TextEdit.PlainText
        wrapMode: TextEdit.Wrap
        tabStopDistance: Theme.tabStop
        font.family: Theme.sans
        font.pointSize: Theme.points(field.size)
        font.weight: Font.Medium
        color: Theme.ink
        selectionColor: Theme.selection
        selectedTextColor: Theme.ink
        selectByMouse: true
        Accessible.role: Accessible.EditableText
        Accessible.name: field.placeholder
        Accessible.multiLine: true
        onCursorRectangleChanged: field.showCursor()

        cursorDelegate: Rectangle {
            id: caret

            readonly property bool isWanted: parent?.activeFocus ?? false

            width: 2
            radius: 1
            color: Theme.accentInk
            transform: Translate { x: -1 } // between the letters, not upon the next
            visible: isWanted && (!blink.running || blink.shown)

            Timer {
                id: blink
                property bool shown: true
                interval: Math.max(1, App.caretFlashTime / 2)
                running: caret.isWanted && !Motion.reduced && App.caretFlashTime > 0
                repeat: true
                onTriggered: shown = !shown
                onRunningChanged: shown = true
            }
        }

        Keys.forwardTo: field.tabs ? [field.tabs] : []
        Keys.onTabPressed: field.next?.forceActiveFocus(Qt.TabFocusReason)
        Keys.onBacktabPressed: edit.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
        Keys.onPressed: event => {
            const isEnter = event.key === Qt.Key_Return || event.key === Qt.Key_Enter
            const modifiers = event.modifiers & ~Qt.KeypadModifier
            if (isEnter && modifiers === Qt.NoModifier) {
                // Enter belongs to the input method while it composes.
                if (!edit.inputMethodComposing)
                    field.submitted()
                event.accepted = true
            } else if (menu.isAskedForBy(event)) {
                field.openMenu(Qt.point(edit.cursorRectangle.x, edit.cursorRectangle.y + edit.cursorRectangle.height), true)
                event.accepted = true
            } else if (event.matches(StandardKey.Paste)) {
                field.pasteWanted(event)
            } else if (event.matches(StandardKey.Copy) && edit.selectedText === "") {
                field.copyWanted(event)
            } else if (event.key === Qt.Key_Up && modifiers === Qt.NoModifier && edit.text === "" && !edit.inputMethodComposing) {
                field.recallWanted()
                event.accepted = true
            } else if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown) {
                field.scrollWanted(event)
            } else if ((event.key === Qt.Key_Home || event.key === Qt.Key_End) && field.isAtEnd(event.key)) {
                field.scrollWanted(event)
            }
        }

        PointHandler {
            acceptedButtons: Qt.AllButtons
            onActiveChanged: if (active) field.pressed()
        }
        TapHandler {
            acceptedButtons: Qt.RightButton
            onTapped: point => field.openMenu(point.position, false)
        }
        PointerSelection {
            target: edit
        }
        KeySelection {
            target: edit
        }
        TextLeading {
            document: edit.textDocument
            leading: Theme.bubbleLeading
        }
    }
    Txt {
        x: field.caretRoom
        y: field.endPadding
        width: field.width - x
        visible: edit.text === "" && edit.preeditText === ""
        text: field.placeholder
        size: field.size
        color: Theme.ink3
        elide: Text.ElideRight
        Accessible.ignored: true
    }
}
