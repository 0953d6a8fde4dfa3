import QtQuick
import Vorq

Item {
    TextButton { text: "Open the sheet"; onClicked: sheet.open() }
    Sheet {
        id: sheet
        title: "Change the password"
        acceptText: "Change"
        canAccept: again.text === fresh.text

        FormField { id: former; width: parent.width; label: "Current password"; isPassword: true }
        FormField { id: fresh; width: parent.width; label: "New password"; isPassword: true; text: "correct horse"; hint: "At least 8 characters." }
        FormField { id: again; width: parent.width; label: "New password again"; isPassword: true; text: "correct hose"; error: text === fresh.text ? "" : "The passwords differ" }
    }
    Component.onCompleted: sheet.open()
}
