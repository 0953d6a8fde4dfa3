import QtQuick
import Vorq
import Vorq.Native

// Says what the panel announces.
Announcement {
    id: announcer

    required property PanelViewModel panel

    Connections {
        target: announcer.panel
        function onAnnounced(words) {
            announcer.say(words)
        }
    }
}
