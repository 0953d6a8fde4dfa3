import QtQuick
import Vorq

// Stands for a page of the Hub that is not there yet.
FocusScope {
    id: page

    required property string segment

    function takeKeyboard(reason: int) {
        forceActiveFocus(reason)
    }

    Accessible.role: Accessible.Pane
    Accessible.name: empty.title

    EmptyState {
        id: empty
        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width)
        iconName: ({ notes: "note", chats: "history", tasks: "tasks", trackers: "tracker" })[page.segment] ?? "chat"
        title: qsTr("Not here yet")
        sub: qsTr("This page of the Hub comes with a later release. What you have saved is kept.")
    }
}
