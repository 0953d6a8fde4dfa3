import QtQuick
import Vorq
import Vorq.Native

// A page of the settings: its title over a column that scrolls, and the way back to the list. The arrows
// lead from one control to the next, as Tab does.
FocusScope {
    id: page

    required property string title
    property bool isInner: true // the list is behind it
    property Item first: null // where one types first; the first control of the column otherwise
    property real measure: Theme.grown(640)
    default property alias groups: column.data
    readonly property int sideRoom: 24
    readonly property int endRoom: 24
    readonly property int titleGap: 20
    readonly property int backInset: 14 // of the words in the button

    // The page has just come.
    function takeKeyboard(reason: int) {
        const next = first ? first : heading.nextItemInFocusChain()
        next.forceActiveFocus(reason)
    }
    function holds(item: Item): bool {
        for (let each = item; each; each = each.parent)
            if (each === column)
                return true
        return false
    }
    function step(event, forward: bool) {
        const next = (Window.activeFocusItem ?? heading).nextItemInFocusChain(forward)
        if (holds(next))
            next.forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason)
        else
            pane.pressKey(event)
    }

    Accessible.role: Accessible.Pane
    Accessible.name: title
    Keys.onUpPressed: event => step(event, false)
    Keys.onDownPressed: event => step(event, true)
    Keys.onPressed: event => pane.pressKey(event)

    ScrollPane {
        id: pane
        anchors.fill: parent
        scrolls: qsTr("Scroll the page")

        Column {
            id: frame
            anchors.horizontalCenter: parent?.horizontalCenter
            width: Math.min(page.measure, pane.width - 2 * page.sideRoom)
            spacing: page.titleGap
            bottomPadding: page.endRoom

            Column {
                width: parent.width
                spacing: Theme.space3

                Item {
                    width: parent.width
                    height: back.height
                    visible: page.isInner

                    TextButton {
                        id: back
                        anchors.left: parent.left
                        anchors.leftMargin: -page.backInset
                        text: qsTr("Settings")
                        help: qsTr("Back to the settings")
                        tip: ""
                        iconName: mirrored ? "fwd" : "back"
                        look: TextButton.Quiet
                        onClicked: App.settings.navigation.back()
                    }
                }
                Txt {
                    id: heading
                    width: parent.width
                    leftPadding: Theme.space1
                    text: page.title
                    size: Theme.hugeSize
                    font.weight: Font.Bold
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignLeft
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
            }
            Column {
                id: column
                width: parent.width
                spacing: Theme.space5
            }
        }
    }
}
