import QtQuick
import Vorq
import Vorq.Native

// The settings while nobody is signed in: the way in, and what needs no account.
SettingsPage {
    id: view

    readonly property int pad: 20
    readonly property int markSize: Theme.grown(44)
    property bool hasAppeared: false

    function returnFrom(pane: int, reason: int) {
        const rows = [null, null, null, appearance.applicationRow, appearance.panelRow, panel.customizeRow]
        const row = rows[pane] ?? notice.stops()[0]
        row.forceActiveFocus(reason)
    }

    title: qsTr("Settings")
    isInner: false
    Component.onCompleted: hasAppeared = true

    Item {
        width: parent.width
        height: words.height + 2 * view.pad
        opacity: view.hasAppeared ? 1 : 0
        Accessible.role: Accessible.Grouping
        Accessible.name: title.text

        Behavior on opacity {
            NumberAnimation { duration: Motion.enter; easing.type: Easing.OutCubic }
        }
        Shadow {
            target: plate
            level: 1
        }
        Squircle {
            id: plate
            anchors.fill: parent
            radius: Theme.radiusCard
            fillTop: Theme.surface
            rimTop: Theme.hairline
            rimBottom: Theme.hairline2
        }
        Ico {
            anchors.left: parent.left
            anchors.leftMargin: view.pad
            y: view.pad
            name: "mark"
            size: view.markSize
        }
        Column {
            id: words
            anchors.left: parent.left
            anchors.leftMargin: 2 * view.pad + view.markSize
            anchors.right: parent.right
            anchors.rightMargin: view.pad
            y: view.pad
            spacing: Theme.space2

            Txt {
                id: title
                width: parent.width
                text: qsTr("Sign in to Vorq")
                size: Theme.displaySize
                font.weight: Font.Bold
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Txt {
                width: parent.width
                bottomPadding: Theme.space1
                text: qsTr("Vorq answers once you are signed in. Your browser opens for it.")
                color: Theme.ink2
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            SignInNotice {
                id: notice
                width: parent.width
                signIn: App.settings.signIn
                offersSettings: false
            }
        }
    }
    PanelGroup {
        id: panel
        width: parent.width
    }
    AppearanceGroup {
        id: appearance
        width: parent.width
    }
    PermissionsGroup {
        width: parent.width
    }
}
