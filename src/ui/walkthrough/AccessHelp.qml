pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// What is behind the request and the self-test.
WalkthroughPage {
    id: page

    readonly property Walkthrough walkthrough: App.walkthrough
    readonly property list<string> paragraphs: [
        qsTr("Programs show their text to screen readers, and to Vorq, only while accessibility is on. It is one switch for the whole desktop, and “Open System Settings” turns it on."),
        qsTr("Vorq reads a program when you press one of its keys, and at no other time. Password fields are never read. Which applications are not to be asked at all, the settings file says."),
        qsTr("Some programs look at the switch when they start. These have to be closed and started again."),
        qsTr("Without it Vorq still reads what most programs hand out when you highlight it, and what you copy. The self-test shows which of these ways work here.")
    ]

    state: "help"
    title: qsTr("What Accessibility Is For")
    iconName: "access"
    tint: Theme.accentInk
    isSmall: true
    first: back
    actions: TextButton {
        id: back
        text: qsTr("Back")
        look: TextButton.Primary
        size: 38
        onClicked: page.walkthrough.goBack()
    }

    Repeater {
        model: page.paragraphs

        Txt {
            required property string modelData

            width: parent?.width ?? 0
            bottomPadding: Theme.space1
            text: modelData
            leading: Theme.bubbleLeading
            color: Theme.ink2
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
