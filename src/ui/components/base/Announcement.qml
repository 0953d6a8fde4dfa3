pragma ComponentBehavior: Bound
import QtQuick

// Says things to those who do not see them. Screen readers read out a notification that comes up;
// there is nothing to see of it.
Item {
    id: announcement

    property Item notification: null

    // A new one each time: a name that changes may be read as it was, or not at all. "" takes the former back.
    function say(words: string) {
        if (notification)
            notification.destroy()
        notification = null
        if (words === "")
            return
        notification = sentence.createObject(announcement, { words: words })
        notification.visible = true
    }

    Component {
        id: sentence

        Item {
            property string words: ""

            width: 1
            height: 1
            visible: false
            Accessible.role: Accessible.Notification
            Accessible.name: words
        }
    }
}
