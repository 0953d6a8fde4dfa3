pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// The self-test: what it is about, how far it has got, and what was found.
WalkthroughPage {
    id: page

    readonly property Walkthrough walkthrough: App.walkthrough
    readonly property SelfTestRun test: walkthrough.selfTest
    readonly property bool isRunning: test.isTesting
    readonly property bool isNew: test.total === 0

    // The one that is made stays in view.
    function showRunning() {
        const row = rows.itemAt(Math.min(test.finished, test.total - 1))
        if (!isRunning || !row)
            return
        const end = row.mapToItem(pane.contentItem, 0, row.height).y + pane.ringRoom
        if (end > pane.contentY + pane.height)
            pane.scrollTo(end - pane.height)
    }

    title: qsTr("Self-Test")
    iconName: isRunning ? "access" : test.hasFailures ? "crossCircleFill" : test.hasPassed ? "checkCircleFill" : "access"
    tint: isRunning ? Theme.accentInk : test.hasFailures ? Theme.bad : test.hasPassed ? Theme.ok : Theme.accentInk
    isSmall: true
    first: isRunning ? cancel : isNew ? run : done
    onHelpWanted: walkthrough.showHelp()
    // What goes would take the keyboard with it.
    onIsRunningChanged: {
        changed.restart()
        pane.scrollTo(0)
    }
    actions: [
        TextButton {
            id: cancel
            visible: page.isRunning
            text: qsTr("Cancel")
            help: qsTr("Ends the test")
            size: 38
            onClicked: page.test.cancel()
        },
        TextButton {
            id: done
            visible: !page.isRunning && !page.isNew
            text: qsTr("Done")
            look: TextButton.Primary
            size: 38
            onClicked: page.walkthrough.close()
        },
        TextButton {
            id: run
            visible: !page.isRunning
            text: page.isNew ? qsTr("Run") : qsTr("Run Again")
            look: page.isNew ? TextButton.Primary : TextButton.Secondary
            size: 38
            onClicked: page.test.start()
        },
        TextButton {
            visible: page.isNew
            text: qsTr("Close")
            size: 38
            onClicked: page.walkthrough.close()
        }
    ]

    Announcement {
        id: spoken
    }
    // Once the buttons and the rows are as they should be.
    Timer {
        id: changed
        interval: 0
        onTriggered: page.takeKeyboard(Qt.TabFocusReason)
    }
    Timer {
        id: checked
        interval: 0
        onTriggered: page.showRunning()
    }
    Connections {
        target: page.test
        function onChanged() {
            checked.restart()
        }
    }
    Txt {
        id: status
        width: parent.width
        text: page.isRunning ? qsTr("Leave keyboard and mouse alone until the small window is gone.")
            : page.isNew ? qsTr("Vorq opens a small window and tries out on it what works on this desktop: capture, replacing text, hot keys. For some seconds that window has the keyboard. It also asks the backend, the tray and your notes.")
            : page.test.outcome
        leading: Theme.bubbleLeading
        color: page.isRunning || page.isNew ? Theme.ink2 : Theme.ink
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        onTextChanged: spoken.say(text)
    }
    Item {
        width: parent.width
        height: bar.height + Theme.space2
        visible: page.isRunning

        TestProgress {
            id: bar
            width: parent.width
            finished: page.test.finished
            total: page.test.total
        }
    }
    SettingsGroup {
        id: list
        width: parent.width
        visible: !page.isNew
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Checks")

        Repeater {
            id: rows
            model: page.test.checks

            CheckRow {
                width: list.width
                isOver: !page.isRunning
            }
        }
    }
}
