import QtQuick
import Vorq
import Vorq.Native

// What the system lets the program do, a line each.
SettingsGroup {
    id: lines

    required property PermissionRows permissions
    property bool isAsking: false

    Accessible.name: qsTr("Permissions")

    PermissionLine {
        width: lines.width
        text: qsTr("Accessibility")
        iconName: "access"
        permission: lines.permissions.textCapture
        isAsking: lines.isAsking
    }
    PermissionLine {
        width: lines.width
        text: qsTr("Screen")
        iconName: "screen"
        permission: lines.permissions.screen
    }
    PermissionLine {
        width: lines.width
        text: qsTr("Microphone")
        iconName: "mic"
        permission: lines.permissions.microphone
    }
}
