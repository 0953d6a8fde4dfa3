pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Vorq

// The clips of what is attached, which wrap. Beyond some rows they scroll.
Flickable {
    id: tray

    required property PanelViewModel panel
    property Item tabs: null // takes the keys of all controls first
    property int current: 0 // which of the clips Tab leads to
    readonly property int gap: 6
    readonly property int ringRoom: 4 // round the clips
    readonly property int tallest: Theme.grown(128)
    readonly property AttachmentClip currentClip: clips.count > 0 ? clips.itemAt(Math.min(current, clips.count - 1)) as AttachmentClip : null

    // The keyboard had a clip that is gone, and there is no other.
    signal keyboardFreed

    // What Tab leads to, in its order; arrow keys lead to the other clips.
    function stops(): var {
        const clip = currentClip
        return clip ? [clip, ...(clip.hasFailed ? [clip.retryButton] : []), clip.removeButton] : []
    }
    function focusClip(row: int) {
        const clip = clips.itemAt(Math.max(0, Math.min(row, clips.count - 1)))
        if (clip)
            clip.forceActiveFocus(Qt.TabFocusReason)
        else
            keyboardFreed()
    }
    function remove(row: int, byKey: bool) {
        panel.attachments.removeAt(row)
        if (byKey)
            focusClip(row)
        else
            keyboardFreed()
    }
    function reveal(clip: Item) {
        flow.forceLayout()
        contentY = Math.max(0, Math.min(contentY, clip.y), clip.y + clip.height + 2 * ringRoom - height)
    }

    visible: clips.count > 0
    implicitHeight: Math.min(flow.height + 2 * ringRoom, tallest)
    contentHeight: flow.height + 2 * ringRoom
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.VerticalFlick
    clip: interactive
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Attachments")
    T.ScrollBar.vertical: Scroller {
        scrolls: qsTr("Scroll the attachments")
        shown: hover.hovered && tray.interactive
    }

    HoverHandler {
        id: hover
    }
    Flow {
        id: flow
        x: tray.ringRoom
        y: tray.ringRoom
        width: tray.width - 2 * x
        spacing: tray.gap

        Repeater {
            id: clips
            model: tray.panel.attachments
            // What is added stands below what is shown.
            onItemAdded: (row, item) => Qt.callLater(tray.reveal, item)

            AttachmentClip {
                id: clip
                required property int index
                required property string name

                function showReason() {
                    if (hasFailed)
                        tray.reveal(clip)
                }

                label: kind === "deepen" ? detail : name
                rowWidth: flow.width
                tabs: tray.tabs
                onRemoved: byKey => tray.remove(index, byKey)
                onRetried: {
                    clip.forceActiveFocus(Qt.OtherFocusReason) // its button goes
                    tray.panel.attachments.retry(index)
                }
                // With its reason it is higher than it was, and to be read.
                onHeightChanged: () => Qt.callLater(clip.showReason)
                onHasFailedChanged: () => Qt.callLater(clip.showReason)
                onStepped: by => tray.focusClip(index + by)
                onActiveFocusChanged: {
                    if (!activeFocus)
                        return
                    tray.current = index
                    tray.reveal(clip)
                }
            }
        }
    }
}
