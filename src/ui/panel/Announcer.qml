pragma ComponentBehavior: Bound
import QtQuick
import Vorq.Native

// Says things to those who do not see them. Screen readers read out a notification that comes up;
// there is nothing to see of it.
Item {
    id: announcer

    required property PanelViewModel panel
    property Item notification: null

    // A new one each time: a name that changes may be read as it was.
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
    Connections {
        target: announcer.panel
        function onAnnounced(words) {
            if (announcer.notification)
                announcer.notification.destroy()
            announcer.notification = sentence.createObject(announcer, { words: words })
            announcer.notification.visible = true
        }
    }
}
