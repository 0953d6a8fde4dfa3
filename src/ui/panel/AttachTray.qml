pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Vorq
import Vorq.Native

// What can be attached, above the composer: its sources, and the picker of notes.
Glass {
    id: tray

    required property PanelViewModel panel
    readonly property int inset: 8
    readonly property int headHeight: Theme.grown(50)
    readonly property int emptyHeight: Theme.grown(76)
    readonly property int tallestList: 318
    readonly property AttachableNotes notes: panel.attachableNotes
    readonly property bool showsNotes: panel.tray.mode === AttachTrayState.Notes
    property Item tabs: null // takes the keys of all controls first

    // What Tab leads to, in its order.
    function stops(): var {
        if (!showsNotes)
            return [fromNotes, studyFiles, photos]
        const rows = Array.from({ length: list.count }, (none, i) => list.itemAtIndex(i))
        return [back, done, ...rows.filter(row => row)]
    }

    floats: true
    radius: Theme.radiusComposer
    elevation: 3
    implicitHeight: showsNotes ? headHeight + (notes.count > 0 ? list.height + more.height : emptyHeight) : sources.height + 2 * inset
    Accessible.role: Accessible.PopupMenu
    Accessible.name: qsTr("Attachment options")

    // What lies under the tray gets no clicks through it.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onWheel: wheel => wheel.accepted = true
    }

    Column {
        id: sources
        visible: !tray.showsNotes
        x: tray.inset
        y: tray.inset
        width: parent.width - 2 * tray.inset
        spacing: 2

        TrayRow {
            id: fromNotes
            tabs: tray.tabs
            width: parent.width
            text: qsTr("Attach from Notes")
            sub: qsTr("Any note in your library")
            iconName: "note"
            tint: Theme.noteTile
            leadsOn: true
            onClicked: {
                tray.panel.tray.mode = AttachTrayState.Notes
                back.forceActiveFocus(Qt.TabFocusReason)
            }
        }
        TrayRow {
            id: studyFiles
            tabs: tray.tabs
            width: parent.width
            text: qsTr("Add study files")
            sub: qsTr("Images, text, Markdown…")
            help: qsTr("Add study files — images, text, Markdown, and more")
            iconName: "doc"
            onClicked: tray.panel.filesWanted(false)
        }
        TrayRow {
            id: photos
            tabs: tray.tabs
            width: parent.width
            text: qsTr("Add photos")
            sub: qsTr("Screenshots, scans, pictures")
            help: qsTr("Add photos for Vorq")
            iconName: "photo"
            tint: Theme.ok
            onClicked: tray.panel.filesWanted(true)
        }
    }
    Item {
        visible: tray.showsNotes
        anchors.fill: parent

        Item {
            width: parent.width
            height: tray.headHeight

            IconButton {
                id: back
                tabs: tray.tabs
                x: tray.inset + 2
                anchors.verticalCenter: parent.verticalCenter
                size: 30
                iconName: "back"
                text: qsTr("Back")
                onClicked: {
                    tray.panel.tray.mode = AttachTrayState.Root
                    fromNotes.forceActiveFocus(Qt.TabFocusReason)
                }
            }
            Txt {
                anchors.centerIn: parent
                text: qsTr("Notes")
                size: Theme.bodySize
                font.weight: Font.DemiBold
            }
            TextButton {
                id: done
                tabs: tray.tabs
                anchors.right: parent.right
                anchors.rightMargin: tray.inset + 2
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Done")
                look: TextButton.Quiet
                size: 30
                onClicked: tray.panel.tray.isShown = false
            }
        }
        Rectangle {
            x: Theme.space3
            y: tray.headHeight
            width: parent.width - 2 * Theme.space3
            height: 1
            color: Theme.hairline
        }
        ListView {
            id: list
            y: tray.headHeight + 1
            width: parent.width
            height: Math.min(contentHeight + topMargin + bottomMargin, tray.tallestList)
            visible: tray.notes.count > 0
            model: tray.notes
            spacing: 2
            topMargin: tray.inset
            bottomMargin: tray.inset
            boundsBehavior: Flickable.StopAtBounds
            interactive: contentHeight + topMargin + bottomMargin > height
            keyNavigationEnabled: false
            clip: true
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Notes")
            delegate: NoteRow {
                required property int index

                tabs: tray.tabs
                x: tray.inset
                width: list.width - 2 * tray.inset
                onClicked: tray.notes.toggle(index)
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
            visible: tray.showsNotes && tray.notes.appleNotesLoading && tray.notes.count > 0
            text: qsTr("Loading Notes…")
            size: Theme.metaSize
            color: Theme.ink2
            horizontalAlignment: Text.AlignHCenter
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Txt {
            x: Theme.space5
            y: tray.headHeight
            width: parent.width - 2 * Theme.space5
            height: tray.emptyHeight
            visible: tray.notes.count === 0
            text: tray.notes.appleNotesLoading ? qsTr("Loading Notes…")
                                               : qsTr("No notes found. Save a chat to Notes, then try again.")
            color: Theme.ink2
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
