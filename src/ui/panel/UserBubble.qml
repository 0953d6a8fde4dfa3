pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// What the user said, at the right. The last paragraph names what is attached, and unfolds to what
// was sent beside the words.
Item {
    id: bubble

    required property string message
    property string sentText: "" // "" for nothing beside the words
    property string sentApplication: ""
    property Item tabs: null // takes the keys of the fold first
    property real widest: 316
    readonly property int sidePadding: 14
    readonly property int endPadding: 10
    readonly property real clipOpacity: 0.82
    readonly property real ruleOpacity: 0.14
    readonly property int iconSize: 14
    readonly property int iconGap: 6
    readonly property string clipSign: "\n\n📎 "
    readonly property int clipAt: message.lastIndexOf(clipSign)
    readonly property bool isClipOnly: message.startsWith("Attached: ") && message.indexOf("\n") < 0
    readonly property string said: isClipOnly ? "" : clipAt < 0 ? message : message.slice(0, clipAt)
    readonly property string attached: isClipOnly ? message : clipAt < 0 ? "" : message.slice(clipAt + clipSign.length)
    // A picture of a whole pasted book would fill the memory; a rectangle is drawn where it is seen.
    readonly property bool isTall: plate.height > 2000
    readonly property color fillTop: Qt.lighter(Theme.userBlock, Theme.userBlockLift)
    readonly property real textRoom: widest - 2 * sidePadding
    readonly property bool hasSent: sentText !== ""
    property SentText sent: null // the fold, while there is one

    signal unfolding

    // What Tab leads to.
    function stops(): var {
        return sent ? [sent.foldButton] : []
    }

    implicitHeight: plate.height
    Accessible.role: Accessible.ListItem
    Accessible.name: attached === "" ? qsTr("You: %1").arg(said)
                   : said === "" ? qsTr("You: %1").arg(attached)
                   : qsTr("You: %1. Attached: %2").arg(said).arg(attached)

    Item {
        id: plate
        anchors.right: parent.right
        width: Math.max(words.visible ? words.width : 0, names.visible ? names.width : 0, bubble.sent?.width ?? 0) + 2 * bubble.sidePadding
        height: column.height + 2 * bubble.endPadding

        Squircle {
            anchors.fill: parent
            visible: !bubble.isTall
            radius: Theme.radiusBlock
            fillTop: bubble.fillTop
            fillBottom: Theme.userBlock
            rimTop: Theme.userBlockRim
            rimBottom: Theme.userBlockRim
        }
        Rectangle {
            anchors.fill: parent
            visible: bubble.isTall
            radius: Theme.radiusBlock
            border.color: Theme.userBlockRim
            gradient: Gradient {
                GradientStop { position: 0; color: bubble.fillTop }
                GradientStop { position: 1; color: Theme.userBlock }
            }
        }
        Column {
            id: column
            x: bubble.sidePadding
            y: bubble.endPadding
            spacing: Theme.space2

            TextEdit {
                id: words
                visible: bubble.said !== ""
                width: Math.min(implicitWidth, bubble.textRoom)
                // The leading lies between lines, never under the last.
                height: implicitHeight - Theme.bubbleLeading
                text: bubble.said
                textFormat: TextEdit.PlainText
                font.family: Theme.sans
                font.pointSize: Theme.points(Theme.bodySize)
                font.weight: Font.Medium
                color: Theme.userInk
                selectionColor: Theme.selection
                selectedTextColor: Theme.userInk
                wrapMode: TextEdit.Wrap
                tabStopDistance: Theme.tabStop
                readOnly: true
                selectByMouse: true
                activeFocusOnTab: false
                Accessible.ignored: true
                objectName: "words"

                Keys.onPressed: event => {
                    if (!menu.isAskedForBy(event))
                        return
                    const caret = words.cursorRectangle
                    openMenu(Qt.point(caret.x, caret.y + caret.height), true)
                    event.accepted = true
                }

                function openMenu(at: point, byKey: bool) {
                    menu.open(words, at, [
                        { text: qsTr("Copy"), off: words.selectedText === "", act: () => words.copy() },
                        { text: qsTr("Copy message"), act: () => App.panel.outlet.copyText(bubble.said) }
                    ], byKey)
                }

                TapHandler {
                    acceptedButtons: Qt.RightButton
                    onTapped: point => words.openMenu(point.position, false)
                }
                OutsidePress {
                    enabled: words.selectedText !== ""
                    area: words
                    onPressed: words.deselect()
                }
                TextMenu {
                    id: menu
                }
                PointerSelection {
                    target: words
                }
                KeySelection {
                    target: words
                }
                TextLeading {
                    document: words.textDocument
                    leading: Theme.bubbleLeading
                }
            }
            Rectangle {
                visible: bubble.said !== "" && (bubble.attached !== "" || bubble.hasSent)
                width: plate.width - 2 * bubble.sidePadding
                height: 1
                color: Theme.userInk
                opacity: Theme.high ? 1 : bubble.ruleOpacity
            }
            Row {
                id: names
                visible: bubble.attached !== "" && !bubble.hasSent
                spacing: bubble.iconGap

                Ico {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "clip"
                    size: bubble.iconSize
                    color: Theme.withAlpha(Theme.userInk, bubble.clipOpacity)
                }
                Txt {
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(implicitWidth, bubble.textRoom - bubble.iconSize - bubble.iconGap)
                    text: bubble.attached
                    size: Theme.metaSize
                    font.weight: Font.Medium
                    color: Theme.withAlpha(Theme.userInk, bubble.clipOpacity)
                    elide: Text.ElideMiddle
                    Accessible.ignored: true
                }
            }
            Repeater {
                model: bubble.hasSent ? 1 : 0
                onItemAdded: (index, item) => bubble.sent = item as SentText
                onItemRemoved: bubble.sent = null

                SentText {
                    content: bubble.sentText
                    application: bubble.sentApplication
                    label: bubble.attached !== "" ? bubble.attached
                         : application !== "" ? qsTr("With text from %1").arg(application) : qsTr("With text")
                    widest: bubble.textRoom
                    tabs: bubble.tabs
                    onToggling: bubble.unfolding()
                }
            }
        }
    }
}
