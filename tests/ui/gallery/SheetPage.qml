import QtQuick
import Vorq

Item {
    TextButton { text: "Open the sheet"; onClicked: sheet.open() }
    Sheet {
        id: sheet
        title: "Save this chat to Notes?"
        text: "The note is kept in your library. What you add to the chat later does not come into it by itself."
        acceptText: "Save"
    }
    Component.onCompleted: sheet.open()
}
