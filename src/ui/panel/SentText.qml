pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// What went out with a prompt beside its words, folded away until the user asks for it.
Column {
    id: sent

    required property string content
    required property string application // whose text it is; "" if that is not known
    required property string label // what the fold says
    property real widest: 290
    property bool isOpen: false
    property Item tabs: null // takes the keys of the fold first
    readonly property alias foldButton: fold
    readonly property int iconSize: 14
    readonly property int iconGap: 6
    readonly property int foldHeight: Theme.grown(20)
    readonly property int inset: 10
    readonly property int reach: 10
    readonly property real quietOpacity: 0.82
    readonly property real plateOpacity: 0.08
    readonly property color ink: Theme.withAlpha(Theme.userInk, quietOpacity)
    // A whole book would fill the memory; what is left out can still be copied.
    readonly property int mostShown: 20000
    readonly property int leftOut: Math.max(0, content.length - mostShown)

    signal toggling

    spacing: Theme.space2

    function toggle() {
        toggling()
        isOpen = !isOpen
    }

    Control {
        id: fold
        width: row.width
        height: sent.foldHeight
        text: sent.isOpen ? qsTr("Hide the text that was sent") : qsTr("Show the text that was sent")
        help: sent.label
        ringRadius: Theme.radiusCode
        tabs: sent.tabs
        onClicked: sent.toggle()
        containmentMask: reach

        // Also a press beside the words is meant for them.
        Item {
            id: reach
            x: -sent.reach
            y: -sent.reach
            width: fold.width + 2 * sent.reach
            height: fold.height + 2 * sent.reach
        }

        contentItem: Item {
            Row {
                id: row
                height: parent.height
                spacing: sent.iconGap

                Ico {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "clip"
                    size: sent.iconSize
                    color: sent.ink
                }
                Txt {
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(implicitWidth, sent.widest - 2 * (sent.iconSize + sent.iconGap))
                    text: sent.label
                    size: Theme.metaSize
                    font.weight: Font.Medium
                    color: fold.hovered || fold.down ? Theme.userInk : sent.ink
                    elide: Text.ElideMiddle
                    Accessible.ignored: true
                }
                Ico {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "fwd"
                    size: sent.iconSize
                    color: fold.hovered || fold.down ? Theme.userInk : sent.ink
                    rotation: sent.isOpen ? 90 : 0
                }
            }
        }
    }
    Repeater {
        model: sent.isOpen ? 1 : 0

        Rectangle {
            width: sent.widest
            height: lines.height + 2 * sent.inset
            radius: Theme.radiusCode
            color: Theme.withAlpha(Theme.userInk, sent.plateOpacity)

            Column {
                id: lines
                x: sent.inset
                y: sent.inset
                width: parent.width - 2 * sent.inset
                spacing: Theme.space1

                Txt {
                    width: parent.width
                    visible: sent.application !== ""
                    text: qsTr("Captured from %1").arg(sent.application)
                    size: Theme.captionSize
                    color: sent.ink
                    elide: Text.ElideRight
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                TextEdit {
                    id: words
                    width: parent.width
                    text: sent.content.slice(0, sent.mostShown)
                    textFormat: TextEdit.PlainText
                    font.family: Theme.sans
                    font.pointSize: Theme.points(Theme.metaSize)
                    color: Theme.userInk
                    selectionColor: Theme.selection
                    selectedTextColor: Theme.userInk
                    wrapMode: TextEdit.Wrap
                    tabStopDistance: Theme.tabStop
                    readOnly: true
                    selectByMouse: true
                    activeFocusOnTab: false
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    onActiveFocusChanged: if (!activeFocus) deselect()

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
                            { text: qsTr("Copy the sent text"), act: () => App.panel.outlet.copyText(sent.content) }
                        ], byKey)
                    }

                    TapHandler {
                        acceptedButtons: Qt.RightButton
                        onTapped: point => words.openMenu(point.position, false)
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
                }
                Txt {
                    width: parent.width
                    visible: sent.leftOut > 0
                    text: qsTr("… and %1 more characters, which a right click copies").arg(sent.leftOut)
                    size: Theme.captionSize
                    color: sent.ink
                    wrapMode: Text.Wrap
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }
    }
}
