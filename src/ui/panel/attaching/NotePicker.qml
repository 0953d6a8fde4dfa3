pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Vorq

// The notes that can be attached, which can be searched, each with a tick.
Item {
    id: picker

    required property AttachableNotes notes
    property Item tabs: null // takes the keys of all controls first
    readonly property int inset: 8
    readonly property int headHeight: Theme.grown(50)
    readonly property int tallestList: 318
    readonly property bool hasSearch: !notes.isEmpty
    property bool awaitsSearch: false // the keyboard came before there was anything to search
    readonly property real listTop: headHeight + 1 + (hasSearch ? search.height + inset : 0)

    signal backWanted
    signal doneWanted

    // What Tab leads to, in its order.
    function stops(): var {
        const rows = Array.from({ length: list.count }, (none, i) => list.itemAtIndex(i))
        return [back, done, ...(hasSearch ? [search] : []), ...(again.visible ? [again] : []), ...rows.filter(row => row)]
    }
    // With the keyboard.
    function enter() {
        awaitsSearch = !hasSearch
        if (hasSearch)
            search.forceActiveFocus(Qt.TabFocusReason)
        else
            back.forceActiveFocus(Qt.TabFocusReason)
    }

    implicitHeight: listTop + (list.visible ? list.naturalHeight + more.height : empty.height)
    onHasSearchChanged: {
        if (hasSearch && awaitsSearch && back.activeFocus)
            search.forceActiveFocus(Qt.TabFocusReason)
        awaitsSearch = false
    }

    Item {
        width: parent.width
        height: picker.headHeight

        IconButton {
            id: back
            tabs: picker.tabs
            anchors.left: parent.left
            anchors.leftMargin: picker.inset + 2
            anchors.verticalCenter: parent.verticalCenter
            size: 30
            iconName: Theme.isMirrored ? "fwd" : "back"
            text: qsTr("Back")
            onClicked: picker.backWanted()
        }
        Txt {
            anchors.centerIn: parent
            text: qsTr("Notes")
            size: Theme.bodySize
            font.weight: Font.DemiBold
        }
        TextButton {
            id: done
            tabs: picker.tabs
            anchors.right: parent.right
            anchors.rightMargin: picker.inset + 2
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Done")
            look: TextButton.Quiet
            size: 30
            onClicked: picker.doneWanted()
        }
    }
    Rectangle {
        x: Theme.space3
        y: picker.headHeight
        width: parent.width - 2 * Theme.space3
        height: 1
        color: Theme.hairline
    }
    SearchField {
        id: search
        x: Theme.space3
        y: picker.headHeight + 1 + picker.inset
        width: parent.width - 2 * Theme.space3
        visible: picker.hasSearch
        placeholderText: qsTr("Search the notes")
        Keys.forwardTo: picker.tabs ? [picker.tabs] : []
        onTextChanged: picker.notes.search = text
    }
    ListView {
        id: list

        readonly property real naturalHeight: Math.min(contentHeight + topMargin + bottomMargin, picker.tallestList)

        y: picker.listTop
        width: parent.width
        height: Math.max(0, Math.min(naturalHeight, picker.height - picker.listTop - more.height))
        visible: picker.notes.count > 0
        model: picker.notes
        spacing: 2
        topMargin: picker.inset
        bottomMargin: picker.inset
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight + topMargin + bottomMargin > height
        keyNavigationEnabled: false
        clip: true
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Notes")
        delegate: NoteRow {
            required property int index

            tabs: picker.tabs
            x: picker.inset
            width: list.width - 2 * picker.inset
            onClicked: picker.notes.toggle(index)
            onActiveFocusChanged: if (activeFocus) list.positionViewAtIndex(index, ListView.Contain)
        }
        T.ScrollBar.vertical: Scroller {
            scrolls: qsTr("Scroll the notes")
            shown: listHover.hovered && list.interactive
        }
        HoverHandler {
            id: listHover
        }
    }
    Txt {
        id: more
        x: Theme.space5
        y: list.y + list.height
        width: list.width - 2 * Theme.space5
        height: visible ? Theme.grown(32) : 0
        visible: picker.visible && picker.notes.appleNotesLoading && picker.notes.count > 0
        text: qsTr("Loading Notes…")
        size: Theme.metaSize
        color: Theme.ink2
        horizontalAlignment: Text.AlignHCenter
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Column {
        id: empty
        x: Theme.space5
        y: picker.listTop
        width: parent.width - 2 * x
        visible: picker.notes.count === 0
        topPadding: Theme.space5
        bottomPadding: Theme.space4
        spacing: Theme.space3

        Txt {
            width: parent.width
            text: picker.notes.appleNotesLoading ? qsTr("Loading Notes…")
                : picker.notes.isEmpty ? qsTr("No notes found. Save a chat to Notes, then try again.")
                : qsTr("No note holds “%1”.").arg(picker.notes.search.trim())
            color: Theme.ink2
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        WorkBars {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: picker.notes.appleNotesLoading
        }
        TextButton {
            id: again
            anchors.horizontalCenter: parent.horizontalCenter
            visible: picker.notes.isEmpty && !picker.notes.appleNotesLoading
            text: qsTr("Try again")
            iconName: "restart"
            tabs: picker.tabs
            onClicked: {
                back.forceActiveFocus(Qt.OtherFocusReason) // the button goes
                picker.notes.load()
            }
        }
    }
    Connections {
        target: picker.notes
        function onSearchChanged() {
            if (search.text !== picker.notes.search)
                search.text = picker.notes.search
        }
    }
}
