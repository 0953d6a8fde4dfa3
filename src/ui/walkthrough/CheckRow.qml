import QtQuick
import Vorq

// What came of one check: its state in a word, a sentence, and what to do.
Item {
    id: row

    required property string title
    required property string verdict // "waiting", "running", "ok", "warning", "failed" or "skipped"
    required property string sentence
    required property string advice
    required property var details
    required property int index
    property bool isOver: false // none is made any more
    readonly property bool isWaiting: verdict === "waiting"
    readonly property bool isRunning: verdict === "running"
    readonly property int look: ({ ok: Badge.Ok, warning: Badge.Warn, failed: Badge.Bad })[verdict] ?? Badge.Neutral
    readonly property string word: ({ ok: qsTr("Works"), warning: qsTr("Note"), failed: qsTr("Does not work"), skipped: qsTr("Skipped"), running: qsTr("Testing…") })[verdict]
                                   ?? (isOver ? qsTr("Not tested") : qsTr("Waiting"))
    readonly property int sideRoom: 14
    readonly property int endRoom: 10

    implicitHeight: Math.max(Theme.grown(42), words.height + 2 * endRoom)
    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.ListItem
    Accessible.name: sentence === "" ? qsTr("%1: %2").arg(title).arg(word) : qsTr("%1: %2. %3").arg(title).arg(word).arg(sentence)
    Accessible.description: details.length > 0 ? details.join(", ") + (advice !== "" ? "\n" + advice : "") : advice

    Rectangle {
        x: row.sideRoom
        width: parent.width - 2 * x
        visible: row.index > 0
        height: 1
        color: Theme.hairline
    }
    Column {
        id: words
        anchors.left: parent.left
        anchors.leftMargin: row.sideRoom
        anchors.right: parent.right
        anchors.rightMargin: row.sideRoom
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Item {
            width: parent.width
            height: Math.max(name.height, Theme.grown(22))

            Txt {
                id: name
                anchors.left: parent.left
                anchors.right: row.isRunning ? bars.left : badge.left
                anchors.rightMargin: Theme.space2
                anchors.verticalCenter: parent.verticalCenter
                text: row.title
                size: Theme.titleSize
                font.weight: Font.Medium
                color: row.isWaiting ? Theme.ink3 : Theme.ink
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                Accessible.ignored: true
            }
            WorkBars {
                id: bars
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: row.isRunning
            }
            Badge {
                id: badge
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: !row.isRunning && (!row.isWaiting || row.isOver)
                text: row.word
                look: row.look
                iconName: ["", "check", "info", "close"][row.look]
                Accessible.ignored: true
            }
        }
        Txt {
            width: parent.width
            visible: text !== ""
            text: row.sentence
            size: Theme.metaSize
            leading: Theme.captionLeading
            color: Theme.ink2
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
        Txt {
            width: parent.width
            visible: text !== ""
            text: row.details.join(", ")
            size: Theme.metaSize
            leading: Theme.captionLeading
            font.weight: Font.Medium
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
        Txt {
            width: parent.width
            visible: text !== ""
            text: row.advice
            size: Theme.metaSize
            leading: Theme.captionLeading
            font.weight: Font.Medium
            color: row.look === Badge.Bad ? Theme.bad : row.look === Badge.Warn ? Theme.warn : Theme.ink2
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
    }
}
