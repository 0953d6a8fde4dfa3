pragma ComponentBehavior: Bound
import QtQuick
import Vorq

// Directions that are asked for often, and what uses the suggestion.
Item {
    id: actions

    required property WritingCard card
    readonly property int size: 28
    // In the order of the enumeration.
    readonly property var names: [qsTr("Rephrase"), qsTr("Improve"), qsTr("Shorter")]

    implicitHeight: Math.max(chips.height, use.height)

    function layOut() {
        use.forceLayout()
        chips.forceLayout()
    }

    Flow {
        id: chips
        anchors.left: parent.left
        width: parent.width - use.width - Theme.space2
        spacing: 6

        Repeater {
            model: actions.names

            ActionChip {
                required property int index
                required property string modelData

                text: modelData
                size: actions.size
                enabled: !actions.card.isReplacing
                isChosen: actions.card.activeAction === index
                onClicked: actions.card.run(index)
            }
        }
    }
    Row {
        id: use
        anchors.right: parent.right
        spacing: 6

        // Of what was replaced before the suggestion that is on show.
        TextButton {
            visible: actions.card.hasReplaced && !main.undoes
            size: actions.size
            text: qsTr("Undo")
            look: TextButton.Secondary
            enabled: actions.card.canUndo
            onClicked: actions.card.undo()
        }
        // One button, so that it keeps the focus.
        TextButton {
            id: main
            readonly property bool undoes: actions.card.isReplaced

            size: actions.size
            text: undoes ? qsTr("Undo") : qsTr("Replace")
            look: undoes ? TextButton.Secondary : TextButton.Primary
            enabled: undoes ? actions.card.canUndo : actions.card.canReplace
            onClicked: undoes ? actions.card.undo() : actions.card.replace()
        }
    }
}
