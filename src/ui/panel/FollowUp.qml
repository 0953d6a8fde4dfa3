pragma ComponentBehavior: Bound
import QtQuick
import Vorq

// The suggestion of a reply for the next turn: a question and answers to choose from.
Column {
    id: followUp

    required property string question
    required property list<string> labels
    property Item tabs: null // takes the keys of the labels first
    readonly property int sideRoom: 30

    signal chosen(string label)

    // What Tab leads to, in its order.
    function stops(): var {
        return Array.from({ length: pills.count }, (none, i) => pills.itemAt(i))
    }

    spacing: Theme.space2
    Accessible.role: Accessible.Grouping
    Accessible.name: question !== "" ? question : qsTr("Answers to choose from")

    Txt {
        width: followUp.width
        leftPadding: Theme.space1
        visible: text !== ""
        text: followUp.question
        size: Theme.rowSize
        leading: Theme.captionLeading
        font.weight: Font.DemiBold
        wrapMode: Text.Wrap
    }
    Repeater {
        id: pills
        model: followUp.labels

        Pill {
            required property string modelData

            tabs: followUp.tabs
            text: modelData
            restOpacity: Theme.labelOpacity
            widest: followUp.width - followUp.sideRoom
            onClicked: followUp.chosen(modelData)
        }
    }
}
