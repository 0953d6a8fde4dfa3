pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// A message of the conversation: what the user said, or a reply with what can be done next.
Item {
    id: entry

    required property string messageRole
    required property string text
    required property bool isWorking
    required property bool isTyping
    required property string followUpQuestion
    required property list<string> followUpLabels
    required property string sentText
    required property string sentApplication
    required property var messageId
    required property bool canRetry

    required property PanelViewModel panel
    required property Item container
    required property Item tabs
    required property real columnWidth
    required property real viewTop // what is in view of this item, from its top
    required property real viewHeight
    required property bool glidesIn
    readonly property int gap: 6
    readonly property int wideBubble: 480
    readonly property int narrowBubble: 316
    readonly property int wideFrom: 620
    readonly property bool isUser: messageRole === "user"
    readonly property bool hasFollowUp: !isUser && !isTyping && !isWorking && (followUpQuestion !== "" || followUpLabels.length > 0)

    signal unfolding
    signal caretMoved(Item text, rect caret)

    // What Tab leads to: labels before their reply.
    function stops(): var {
        return [...(retries.itemAt(0)?.stops() ?? []), ...(followUps.itemAt(0)?.stops() ?? []),
                ...(replies.itemAt(0)?.stops() ?? []), ...(bubbles.itemAt(0)?.stops() ?? [])]
    }

    height: body.height
    // No transition of the list: while one runs, its item does not make way for what grows.
    ListView.onAdd: if (glidesIn) arriving.start()

    NumberAnimation {
        id: arriving
        target: entry
        property: "opacity"
        from: 0
        to: 1
        duration: Motion.enter
        easing.type: Easing.OutCubic
    }
    Column {
        id: body
        x: (entry.width - width) / 2
        width: entry.columnWidth
        spacing: entry.gap

        // One of these stands; a repeater makes no item that is not wanted.
        Repeater {
            id: bubbles
            model: entry.isUser ? 1 : 0

            UserBubble {
                width: entry.columnWidth
                message: entry.text
                sentText: entry.sentText
                sentApplication: entry.sentApplication
                tabs: entry.tabs
                onUnfolding: entry.unfolding()
                widest: entry.columnWidth > entry.wideFrom ? entry.wideBubble : entry.narrowBubble
            }
        }
        Repeater {
            id: replies
            model: entry.isUser ? 0 : 1

            AssistantReply {
                width: entry.columnWidth
                message: entry.text
                isWorking: entry.isWorking
                isTyping: entry.isTyping
                workLabel: entry.panel.workLabel
                selection: entry.panel.selection
                onCaretMoved: (text, caret) => entry.caretMoved(text, caret)
                container: entry.container
                tabs: entry.tabs
                viewTop: entry.viewTop
                viewHeight: entry.viewHeight
            }
        }
        Repeater {
            id: retries
            model: entry.canRetry && !entry.isWorking && !entry.isTyping ? 1 : 0

            TextButton {
                id: again
                text: qsTr("Try again")
                help: qsTr("Sends the same again, with all that went with it")
                tabs: entry.tabs
                onClicked: entry.panel.retry(entry.messageId)

                function stops(): var {
                    return [again]
                }
            }
        }
        Repeater {
            id: followUps
            model: entry.hasFollowUp ? 1 : 0

            FollowUp {
                width: entry.columnWidth
                question: entry.followUpQuestion
                labels: entry.followUpLabels
                tabs: entry.tabs
                onChosen: label => entry.panel.submitLabel(label)
            }
        }
    }
}
