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
    TextButton {
        id: use
        readonly property bool undoes: actions.card.isReplaced

        anchors.right: parent.right
        size: actions.size
        text: undoes ? qsTr("Undo") : qsTr("Replace")
        look: undoes ? TextButton.Secondary : TextButton.Primary
        enabled: undoes ? actions.card.canUndo : actions.card.canReplace
        onClicked: undoes ? actions.card.undo() : actions.card.replace()
    }
}
