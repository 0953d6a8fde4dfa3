import QtQuick
import QtQuick.Templates as T
import Vorq
import Vorq.Native

// What can be attached, above the composer: its sources, and the picker of notes. Both scroll where there
// is no room for all of them.
Glass {
    id: tray

    required property PanelViewModel panel
    readonly property int inset: 8
    readonly property int leastHeight: Theme.grown(150)
    readonly property bool showsNotes: panel.tray.mode === AttachTrayState.Notes
    property Item tabs: null // takes the keys of all controls first

    // What Tab leads to, in its order.
    function stops(): var {
        return showsNotes ? picker.stops() : [fromNotes, studyFiles, photos]
    }

    floats: true
    radius: Theme.radiusComposer
    elevation: 3
    implicitHeight: showsNotes ? picker.implicitHeight : sources.height + 2 * inset
    Accessible.role: Accessible.PopupMenu
    Accessible.name: qsTr("Attachment options")

    // What lies under the tray gets no clicks through it.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onWheel: wheel => wheel.accepted = true
    }

    Flickable {
        id: pane
        visible: !tray.showsNotes
        anchors.fill: parent
        contentHeight: sources.height + 2 * tray.inset
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        clip: interactive
        T.ScrollBar.vertical: Scroller {
            scrolls: qsTr("Scroll the attachment options")
            shown: paneHover.hovered && pane.interactive
        }

        function reveal(row: Item) {
            contentY = Math.max(0, Math.min(contentY, row.y), row.y + row.height + 2 * tray.inset - height)
        }

        HoverHandler {
            id: paneHover
        }
        Column {
            id: sources
            x: tray.inset
            y: tray.inset
            width: pane.width - 2 * tray.inset
            spacing: 2

            TrayRow {
                id: fromNotes
                onActiveFocusChanged: if (activeFocus) pane.reveal(this)
                tabs: tray.tabs
                width: parent.width
                text: qsTr("Attach from Notes")
                sub: qsTr("Any note in your library")
                iconName: "note"
                tint: Theme.noteTile
                leadsOn: true
                onClicked: {
                    tray.panel.tray.mode = AttachTrayState.Notes
                    picker.enter()
                }
            }
            TrayRow {
                id: studyFiles
                onActiveFocusChanged: if (activeFocus) pane.reveal(this)
                tabs: tray.tabs
                width: parent.width
                text: qsTr("Add study files")
                sub: qsTr("Images, PDF, DOCX, PPTX…")
                help: qsTr("Add study files — PDF, DOCX, PPTX, and more")
                iconName: "doc"
                onClicked: tray.panel.filesWanted(false)
            }
            TrayRow {
                id: photos
                onActiveFocusChanged: if (activeFocus) pane.reveal(this)
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
    }
    NotePicker {
        id: picker
        visible: tray.showsNotes
        anchors.fill: parent
        notes: tray.panel.attachableNotes
        tabs: tray.tabs
        onBackWanted: {
            tray.panel.tray.mode = AttachTrayState.Root
            fromNotes.forceActiveFocus(Qt.TabFocusReason)
        }
        onDoneWanted: tray.panel.tray.isShown = false
    }
}
