import QtQuick
import Vorq
import Vorq.Native

// Where the writer says what is to be done. Enter in an empty field uses the suggestion; Tab in one goes
// through the takes seen so far, and with Control, or where there is but one, on to the next control.
FocusScope {
    id: field

    required property WritingCard card
    property bool isLoaded: false // a text that is laid out tells a change
    readonly property int padding: 6
    readonly property int buttonSize: 28
    readonly property int lineHeight: Theme.grown(40)

    implicitHeight: Math.max(lineHeight, draft.height + 2 * padding)

    function focusPrompt() {
        draft.input.forceActiveFocus()
    }
    function showOther(event, steps: int) {
        const goesOn = (event.modifiers & Qt.ControlModifier) || draft.text !== "" || draft.input.inputMethodComposing
        event.accepted = !goesOn && card.showOtherTake(steps)
    }

    Squircle {
        anchors.fill: parent
        radius: Theme.radiusRow
        fillTop: Theme.plateField
        rimTop: draft.hasFocus ? Theme.fieldFocusRim : Theme.hairline2
        rimBottom: rimTop
        rimWidth: !draft.hasFocus ? 1 : Theme.high ? Theme.focusThickness : 1.5
    }
    PromptField {
        id: draft
        anchors.left: parent.left
        anchors.leftMargin: 13
        anchors.right: sender.left
        anchors.rightMargin: Theme.space2
        anchors.verticalCenter: parent.verticalCenter
        height: implicitHeight
        size: Theme.rowSize
        placeholder: qsTr("Redo, refine, or say replace")
        tabs: takes
        next: sender.enabled ? sender : sender.nextItemInFocusChain()
        onTextChanged: if (field.isLoaded) field.card.draft = text
        onSubmitted: field.card.submit()
        onPasteWanted: event => event.accepted = false
        onPasted: input.paste()
        onCopyWanted: event => {
            event.accepted = field.card.suggestion !== ""
            field.card.copy()
        }
        onPressed: field.card.wantKeyboard() // which the window leaves to others until then
    }
    // Beside the text.
    PointHandler {
        acceptedButtons: Qt.AllButtons
        onActiveChanged: if (active) field.card.wantKeyboard()
    }
    Item {
        id: takes
        Keys.onTabPressed: event => field.showOther(event, 1)
        Keys.onBacktabPressed: event => field.showOther(event, -1)
    }
    IconButton {
        id: sender
        readonly property bool stops: field.card.isWorking
        readonly property real inset: (field.lineHeight - height) / 2

        anchors.right: parent.right
        anchors.rightMargin: inset
        anchors.bottom: parent.bottom
        anchors.bottomMargin: inset
        size: field.buttonSize
        iconSize: 16
        iconName: stops ? "stop" : "send"
        look: stops ? IconButton.Soft : IconButton.Accent
        enabled: stops || field.card.canSubmit
        text: stops ? qsTr("Stop") : qsTr("Send")
        onClicked: stops ? field.card.stop() : field.card.submit()
    }
    Component.onCompleted: {
        draft.text = card.draft
        isLoaded = true
    }
    Connections {
        target: field.card
        function onDraftChanged() {
            if (draft.text !== field.card.draft)
                draft.text = field.card.draft
        }
    }
}
