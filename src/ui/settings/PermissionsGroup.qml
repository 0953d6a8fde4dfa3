import QtQuick
import Vorq
import Vorq.Native

// What the system lets the program do.
SettingsGroup {
    id: group

    readonly property PermissionRows permissions: App.settings.permissions

    title: qsTr("Permissions")
    remark: permissions.message
    onRemarkChanged: spoken.say(remark)

    PermissionRow {
        id: textCapture
        width: group.width
        text: qsTr("Accessibility")
        permission: group.permissions.textCapture
        grantedText: qsTr("Vorq can read highlighted text.")
        wantedText: qsTr("Lets Vorq read highlighted text.")
        iconName: "access"

        Announcement {
            id: spoken
        }
        TextButton {
            anchors.verticalCenter: parent?.verticalCenter
            visible: !textCapture.isGranted
            text: qsTr("Enable")
            look: TextButton.Primary
            size: 30
            onClicked: group.permissions.enableTextCapture()
            // Tab goes on from there as it would have from here.
            onVisibleChanged: if (!visible && activeFocus) nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
        }
    }
    PermissionRow {
        width: group.width
        text: qsTr("Screen")
        permission: group.permissions.screen
        grantedText: qsTr("Vorq can find highlighted text.")
        wantedText: qsTr("Lets Vorq find highlighted text on the screen.")
        iconName: "screen"
    }
    PermissionRow {
        width: group.width
        text: qsTr("Microphone")
        permission: group.permissions.microphone
        grantedText: qsTr("Vorq can listen.")
        wantedText: qsTr("Lets Vorq listen.")
        iconName: "mic"
    }
    SettingsRow {
        width: group.width
        text: qsTr("Self-Test")
        sub: qsTr("Tries out what works on this desktop, and says of the rest what to do.")
        iconName: "checkSquareFill"
        leadsOn: true
        onClicked: group.permissions.openSelfTest()
    }
}
