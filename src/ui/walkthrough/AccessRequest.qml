import QtQuick
import Vorq
import Vorq.Native

// Asks for access, as a system does.
WalkthroughPage {
    id: request

    readonly property Walkthrough walkthrough: App.walkthrough
    readonly property int textWidth: Theme.grown(344)

    title: qsTr("Accessibility Access")
    first: settings
    onHelpWanted: walkthrough.showHelp()
    actions: [
        TextButton {
            id: settings
            text: qsTr("Open System Settings")
            help: qsTr("Turns accessibility on for all programs of this desktop")
            look: TextButton.Primary
            size: 38
            enabled: request.walkthrough.canAsk || request.walkthrough.isAsking
            onClicked: request.walkthrough.openSystemSettings()
        },
        TextButton {
            text: qsTr("Deny")
            help: qsTr("Vorq does not ask again before its next start")
            size: 38
            onClicked: request.walkthrough.deny()
        }
    ]

    Txt {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(request.textWidth, parent.width)
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        leading: Theme.bubbleLeading
        size: Theme.titleSize
        font.weight: Font.DemiBold
        text: qsTr("“%1” would like to control this computer using accessibility features.").arg(request.walkthrough.applicationName)
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Txt {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(request.textWidth, parent.width)
        bottomPadding: Theme.space2
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        leading: Theme.bubbleLeading
        color: Theme.ink2
        text: qsTr("Grant access to this application in Privacy & Security settings, located in System Settings.")
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    PermissionLines {
        width: parent.width
        permissions: request.walkthrough.permissions
        isAsking: request.walkthrough.isAsking
    }
    Row {
        width: parent.width
        visible: request.walkthrough.problem !== ""
        topPadding: Theme.space1
        spacing: 6

        Ico {
            id: sign
            y: Theme.space1 + Math.round((words.lineHeight - height) / 2)
            name: "info"
            size: Theme.grown(15)
            color: Theme.bad
        }
        Txt {
            id: words
            width: parent.width - sign.width - parent.spacing
            text: request.walkthrough.problem
            leading: Theme.captionLeading
            font.weight: Font.Medium
            color: Theme.bad
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
