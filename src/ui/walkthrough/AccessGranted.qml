pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// Access is granted: which programs still have to hear of it.
WalkthroughPage {
    id: granted

    readonly property Walkthrough walkthrough: App.walkthrough
    readonly property bool isDone: walkthrough.programs.length === 0
    readonly property int textWidth: Theme.grown(344)

    title: qsTr("Accessibility Is On")
    iconName: "checkCircleFill"
    tint: Theme.ok
    first: done
    onHelpWanted: walkthrough.showHelp()
    actions: [
        TextButton {
            id: done
            text: qsTr("Done")
            look: TextButton.Primary
            size: 38
            onClicked: granted.walkthrough.close()
        },
        TextButton {
            text: qsTr("Self-Test…")
            help: qsTr("Tries out what of Vorq works on this desktop")
            size: 38
            onClicked: granted.walkthrough.showSelfTest()
        }
    ]

    Txt {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(granted.textWidth, parent.width)
        bottomPadding: Theme.space2
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        leading: Theme.bubbleLeading
        color: Theme.ink2
        text: granted.walkthrough.isLooking ? qsTr("Looking at the programs that run…")
            : granted.isDone ? qsTr("Vorq can read highlighted text.")
            : qsTr("These programs were started before. Close them and start them again, so that they show Vorq their text.")
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    SettingsGroup {
        id: list
        width: parent.width
        visible: !granted.isDone
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Programs to start again")

        Repeater {
            model: granted.walkthrough.programs

            Item {
                id: program

                required property string modelData
                required property int index

                width: list.width
                height: Math.max(Theme.grown(40), name.height + 2 * Theme.space2)
                Accessible.role: Accessible.ListItem
                Accessible.name: modelData

                Rectangle {
                    x: 14
                    width: parent.width - 2 * x
                    visible: program.index > 0
                    height: 1
                    color: Theme.hairline
                }
                Ico {
                    id: icon
                    anchors.left: parent.left
                    anchors.leftMargin: 14
                    anchors.verticalCenter: parent.verticalCenter
                    name: "restart"
                    size: Theme.grown(18)
                    color: Theme.warn
                }
                Txt {
                    id: name
                    anchors.left: icon.right
                    anchors.leftMargin: Theme.space3
                    anchors.right: parent.right
                    anchors.rightMargin: 14
                    anchors.verticalCenter: parent.verticalCenter
                    text: program.modelData
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignLeft
                    Accessible.ignored: true
                }
            }
        }
    }
    PermissionLines {
        width: parent.width
        visible: granted.isDone
        permissions: granted.walkthrough.permissions
    }
}
