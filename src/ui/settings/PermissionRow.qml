import QtQuick
import Vorq

// What the system lets the program do, and whether it does.
SettingsRow {
    id: row

    required property string permission // "granted", "denied" or "pending"
    required property string grantedText
    required property string wantedText
    readonly property bool isGranted: permission === "granted"
    readonly property bool isDenied: permission === "denied"

    sub: isGranted ? grantedText : wantedText + (isDenied ? qsTr(" Current status: denied.") : qsTr(" Current status: not set."))
    tint: isGranted ? Theme.ok : isDenied ? Theme.bad : Theme.accentInk

    Badge {
        anchors.verticalCenter: parent?.verticalCenter
        text: row.isGranted ? qsTr("Granted") : row.isDenied ? qsTr("Denied") : qsTr("Not set")
        look: row.isGranted ? Badge.Ok : row.isDenied ? Badge.Bad : Badge.Warn
    }
}
