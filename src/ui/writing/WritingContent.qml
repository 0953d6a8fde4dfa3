pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// What the card shows: what the writer may do with the selection, what became of it, or why nothing can be
// done.
FocusScope {
    id: content

    required property WritingCard card
    readonly property int edge: 12
    readonly property bool hasSession: card.notice === ""
    readonly property bool takesAsks: hasSession && card.isSignedIn

    implicitHeight: column.height

    function layOut() {
        actions.layOut()
        column.forceLayout()
    }

    Connections {
        target: content.card
        function onFocusPromptWanted() {
            field.focusPrompt()
        }
    }
    Column {
        id: column
        width: parent.width
        spacing: Theme.space2 + 2

        WritingHead {
            width: parent.width
            card: content.card
            hasSession: content.takesAsks
        }
        Txt {
            width: parent.width
            visible: !content.hasSession
            bottomPadding: Theme.space1
            text: content.card.notice
            size: Theme.rowSize
            leading: Theme.captionLeading
            wrapMode: Text.Wrap
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        SignInNotice {
            width: parent.width
            visible: content.hasSession && signIn.isMissing
            signIn: content.card.signIn
            offersSettings: false
        }
        SuggestionPlate {
            width: parent.width
            visible: content.takesAsks && (content.card.isWorking || content.card.suggestion !== "")
            card: content.card
        }
        WritingLine {
            width: parent.width
            visible: content.card.error !== ""
            iconName: "info"
            text: content.card.error
            ink: Theme.bad
            role: Accessible.AlertMessage
        }
        WritingLine {
            width: parent.width
            visible: content.card.isReplaced
            iconName: "check"
            text: qsTr("Replaced")
            ink: Theme.ok
        }
        WritingActions {
            id: actions
            width: parent.width
            visible: content.takesAsks
            card: content.card
        }
        AskField {
            id: field
            width: parent.width
            visible: content.takesAsks
            focus: true
            card: content.card
        }
    }
}
