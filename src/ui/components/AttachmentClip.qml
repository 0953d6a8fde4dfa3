import QtQuick
import Vorq
import Vorq.Native

// What is attached to a prompt, with a way to take it off. While it is loading its bars breathe; one
// that failed takes the whole row and says why.
Squircle {
    id: clip

    required property string kind // "photo", "doc", "note" or "deepen"
    required property string label
    required property string detail // the whole of what the label stands for
    required property bool isLoading
    required property bool hasFailed
    required property string reason // why it failed
    property real widest: 200 // of the label
    property real rowWidth: 396
    property Item tabs: null // takes the keys first
    readonly property alias removeButton: remove
    readonly property alias retryButton: retry
    readonly property bool isTinted: kind === "deepen"
    readonly property int sidePadding: 10
    readonly property int gap: 6
    readonly property int iconSize: Theme.grown(15)
    readonly property int buttonSize: Theme.grown(26)
    readonly property int leastHeight: Theme.grown(30)
    readonly property int failedRoom: 7 // above and below what a failed clip says
    readonly property real rimOpacity: 0.22
    readonly property real iconRoom: sidePadding + iconSize + gap
    readonly property real wordsRoom: rowWidth - iconRoom - buttons.width - gap

    // By a key that asks to go on with the keyboard among the clips, or not.
    signal removed(byKey: bool)
    signal retried
    // To another clip: the next one by 1, the one before by -1.
    signal stepped(by: int)

    implicitHeight: hasFailed ? Math.max(leastHeight, words.height + 2 * failedRoom) : leastHeight
    implicitWidth: hasFailed ? rowWidth : iconRoom + name.width + gap + buttons.width
    radius: Theme.radiusTile
    fillTop: hasFailed ? Theme.badSoft : isTinted ? Theme.accentSoft : Theme.track
    rimTop: hasFailed ? Theme.faint(Theme.bad, rimOpacity) : isTinted ? Theme.faint(Theme.accentInk, rimOpacity) : Theme.hairline
    rimBottom: rimTop
    activeFocusOnTab: true
    Accessible.role: Accessible.ListItem
    Accessible.focusable: true
    Accessible.name: isLoading ? qsTr("%1, loading").arg(label) : hasFailed ? qsTr("%1, not attached").arg(label) : label
    Accessible.description: hasFailed ? reason : detail
    Keys.forwardTo: tabs ? [tabs] : []
    Keys.onDeletePressed: removed(true)
    Keys.onPressed: event => {
        const forward = Theme.isMirrored ? Qt.Key_Left : Qt.Key_Right
        const back = Theme.isMirrored ? Qt.Key_Right : Qt.Key_Left
        event.accepted = true
        if (event.key === Qt.Key_Backspace)
            clip.removed(true)
        else if (event.key === forward || event.key === back)
            clip.stepped(event.key === forward ? 1 : -1)
        else if (clip.hasFailed && clip.activeFocus && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter))
            clip.retried()
        else
            event.accepted = false
    }

    FocusRing {
        visible: clip.activeFocus
        around: clip.radius
    }
    // What the label is too short for.
    Tip {
        owner: clip
        words: clip.hasFailed ? clip.reason : name.truncated ? clip.detail : ""
        wanted: clip.activeFocus || (hover.hovered && !remove.hovered && !retry.hovered)
    }
    HoverHandler {
        id: hover
    }
    Item {
        id: sign
        anchors.left: parent.left
        anchors.leftMargin: clip.sidePadding
        width: clip.iconSize
        height: clip.hasFailed ? 2 * clip.failedRoom + name.height : parent.height

        Ico {
            anchors.centerIn: parent
            visible: !clip.isLoading
            name: clip.hasFailed ? "warnFill" : clip.kind
            size: clip.iconSize
            color: clip.hasFailed ? Theme.bad : clip.isTinted ? Theme.accentInk : Theme.ink2
        }
        WorkBars {
            anchors.centerIn: parent
            visible: clip.isLoading
            size: Math.round(clip.iconSize * 0.75)
        }
    }
    Column {
        id: words
        anchors.left: sign.right
        anchors.leftMargin: clip.gap
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Txt {
            id: name
            width: clip.hasFailed ? clip.wordsRoom : Math.min(implicitWidth, clip.widest, clip.wordsRoom)
            text: clip.label
            size: Theme.metaSize
            font.weight: Font.Medium
            color: clip.isTinted ? Theme.accentInk : clip.isLoading ? Theme.ink2 : Theme.ink
            horizontalAlignment: Text.AlignLeft
            elide: clip.isTinted ? Text.ElideRight : Text.ElideMiddle // the end of a name tells its kind
            Accessible.ignored: true
        }
        Txt {
            width: clip.wordsRoom
            visible: clip.hasFailed
            text: clip.reason
            size: Theme.captionSize
            leading: Theme.captionLeading
            color: Theme.bad
            horizontalAlignment: Text.AlignLeft
            wrapMode: Text.Wrap
            maximumLineCount: 4
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
    Row {
        id: buttons
        anchors.right: parent.right
        anchors.rightMargin: clip.hasFailed ? 2 : 0
        y: clip.hasFailed ? 2 : (parent.height - height) / 2

        IconButton {
            id: retry
            visible: clip.hasFailed
            tabs: clip.tabs
            text: qsTr("Try %1 again").arg(clip.label)
            iconName: "restart"
            size: clip.buttonSize
            slack: 1
            iconSize: Theme.grown(14)
            onClicked: clip.retried()
        }
        IconButton {
            id: remove
            tabs: clip.tabs
            text: clip.isLoading ? qsTr("Cancel %1").arg(clip.label) : qsTr("Remove %1").arg(clip.label)
            iconName: "close"
            size: clip.buttonSize
            slack: 3
            iconSize: Theme.grown(10)
            onClicked: clip.removed(visualFocus)
        }
    }
}
