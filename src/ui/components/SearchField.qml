import QtQuick
import Vorq

// A field to search by. Escape and the cross empty it; an Escape in an empty one goes on.
TextField {
    id: field

    readonly property int iconSize: Theme.grown(16)
    readonly property int clearSize: Theme.grown(28)
    readonly property bool hasText: text !== ""

    implicitWidth: 240
    startRoom: iconSize + Theme.space1
    endRoom: clearSize - Theme.space2
    placeholderText: qsTr("Search")
    inputMethodHints: Qt.ImhNoPredictiveText
    Accessible.name: placeholderText
    Accessible.searchEdit: true
    Keys.onEscapePressed: event => {
        event.accepted = hasText
        clear()
    }

    Ico {
        anchors.left: parent.left
        anchors.leftMargin: field.sidePadding - 1
        anchors.verticalCenter: parent.verticalCenter
        name: "search"
        size: field.iconSize
        color: field.enabled ? Theme.ink3 : Theme.inkOff
    }
    IconButton {
        anchors.right: parent.right
        anchors.rightMargin: Theme.space1
        anchors.verticalCenter: parent.verticalCenter
        visible: field.hasText && field.enabled
        size: field.clearSize
        slack: 2
        iconSize: Theme.grown(11)
        iconName: "close"
        text: qsTr("Clear the search")
        onClicked: {
            field.clear()
            field.forceActiveFocus(Qt.OtherFocusReason)
        }
    }
}
