import QtQuick
import Vorq
import Vorq.Native

// What can be attached, above the composer: its sources, and the picker of notes.
Glass {
    id: tray

    required property PanelViewModel panel
    readonly property int inset: 8
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
                picker.enter()
            }
        }
        TrayRow {
            id: studyFiles
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
