import QtQuick
import Vorq
import Vorq.Native

// The title of the card, and what can be done with a suggestion beside using it.
Item {
    id: head

    required property WritingCard card
    property bool hasSession: true
    readonly property int buttonSize: 26
    readonly property int iconSize: 14
    readonly property bool hasSuggestion: hasSession && card.suggestion !== ""

    implicitHeight: Math.max(Theme.grown(buttonSize), title.height)

    Row {
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.space2

        Ico {
            anchors.verticalCenter: parent.verticalCenter
            name: "mark"
            size: Theme.grown(17)
        }
        Txt {
            id: title
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Rewrite")
            size: Theme.rowSize
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
    }
    Row {
        anchors.right: parent.right
        anchors.rightMargin: -2
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Txt {
            anchors.verticalCenter: parent.verticalCenter
            visible: head.hasSuggestion && head.card.takeCount > 1 && head.card.takeNumber > 0
            rightPadding: Theme.space1
            text: qsTr("%1 of %2").arg(head.card.takeNumber).arg(head.card.takeCount)
            size: Theme.metaSize
            font.weight: Font.Medium
            color: Theme.ink2
            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("Take %1 of %2").arg(head.card.takeNumber).arg(head.card.takeCount)
        }
        // Of what was replaced before the suggestion that is on show.
        IconButton {
            visible: head.hasSession && head.card.hasReplaced && !head.card.isReplaced
            enabled: head.card.canUndo
            size: head.buttonSize
            iconSize: head.iconSize
            iconName: "restart"
            text: qsTr("Undo")
            onClicked: head.card.undo()
        }
        // After a rewrite that failed.
        IconButton {
            visible: head.hasSession && !head.hasSuggestion && !head.card.isWorking && head.card.takeCount > 0
            size: head.buttonSize
            iconSize: head.iconSize
            iconName: "back"
            text: qsTr("Show the last suggestion")
            onClicked: head.card.showOtherTake(1)
        }
        IconButton {
            visible: head.hasSuggestion
            size: head.buttonSize
            iconSize: head.iconSize
            iconName: "pencil"
            checkable: true
            checked: head.card.showsDifference
            Accessible.checkable: true
            Accessible.checked: checked
            text: qsTr("Show changes")
            onClicked: head.card.showsDifference = !head.card.showsDifference
        }
        IconButton {
            visible: head.hasSuggestion
            size: head.buttonSize
            iconSize: head.iconSize
            iconName: "copy"
            text: qsTr("Copy")
            onClicked: head.card.copy()
        }
        IconButton {
            size: head.buttonSize
            iconSize: head.iconSize
            iconName: "close"
            text: qsTr("Close")
            onClicked: head.card.dismiss()
        }
    }
}
