import QtQuick

// What a panel has for a window to deal with: text to read, text to edit, something to press.
Rectangle {
    id: scene

    property alias draft: field.text
    property alias isFieldFocused: field.activeFocus
    property alias isButtonPressed: button.pressed
    property int buttonClicks: 0
    property bool isOpaque: false

    function focusField() {
        field.forceActiveFocus();
    }

    color: "#24262d"
    radius: isOpaque ? 0 : 34

    MouseArea {
        id: button

        x: 20
        y: 60
        width: 200
        height: 60
        onClicked: ++scene.buttonClicks
    }

    TextEdit {
        objectName: "reply"
        x: 20
        y: 200
        width: parent.width - 40
        height: 200
        color: "white"
        readOnly: true
        selectByMouse: true
        wrapMode: TextEdit.Wrap
        text: "The reply is text that can be selected with the mouse, word by word and line by line."
    }

    Rectangle {
        x: 12
        y: parent.height - 64
        width: parent.width - 24
        height: 52
        color: "#1c1e23"

        TextInput {
            id: field

            anchors.fill: parent
            anchors.margins: 14
            color: "white"
        }
    }

    // These lie over everything and take no press.
    MouseArea {
        anchors.fill: parent
        enabled: false
    }
    DropArea {
        anchors.fill: parent
    }
}
