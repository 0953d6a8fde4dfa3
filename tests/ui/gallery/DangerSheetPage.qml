import QtQuick
import Vorq

Item {
    TextButton { text: "Open the sheet"; onClicked: sheet.open() }
    Sheet {
        id: sheet
        title: "Delete the note “Leaf optics of the shade, and what it has to do with the green gap”?"
        text: "It cannot be brought back."
        acceptText: "Delete the note"
        isDanger: true
    }
    Component.onCompleted: sheet.open()
}
