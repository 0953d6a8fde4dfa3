import QtQuick
import QtQuick.Templates as T
import Vorq

// A column that scrolls where it is higher than its room. What gets the keyboard comes into view; the
// page's own keys scroll through `pressKey`.
Flickable {
    id: pane

    required property string scrolls // what its scroller is said to do
    property alias spacing: body.spacing
    readonly property alias body: body
    default property alias controls: body.data
    readonly property Item holder: Window.activeFocusItem // of the keyboard
    readonly property int ringRoom: 6 // around what stands in it, whose rings it would cut
    readonly property real line: Theme.grown(40)
    readonly property real page: Math.max(line, height - line)

    // What of the column the keyboard is in; null if it is elsewhere.
    function rowOf(item: Item): Item {
        for (let each = item; each; each = each.parent)
            if (each.parent === body)
                return each
        return null
    }
    // The whole row if there is room, since its words tell what the control in it is.
    function showHolder() {
        const row = rowOf(holder)
        if (!row)
            return
        const shown = row.height <= height - 2 * ringRoom ? row : holder
        const top = shown.mapToItem(contentItem, 0, 0).y - ringRoom
        const end = top + shown.height + 2 * ringRoom
        scrollTo(Math.max(end - height, Math.min(contentY, top)))
    }
    function scrollTo(y: real) {
        contentY = Math.max(0, Math.min(y, contentHeight - height))
    }
    function pressKey(event) {
        event.accepted = interactive
        if (!interactive)
            return
        if (event.key === Qt.Key_Up)
            scrollTo(contentY - line)
        else if (event.key === Qt.Key_Down)
            scrollTo(contentY + line)
        else if (event.key === Qt.Key_PageUp)
            scrollTo(contentY - page)
        else if (event.key === Qt.Key_PageDown)
            scrollTo(contentY + page)
        else if (event.key === Qt.Key_Home)
            scrollTo(0)
        else if (event.key === Qt.Key_End)
            scrollTo(contentHeight)
        else
            event.accepted = false
    }

    contentHeight: body.height + 2 * ringRoom
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    clip: interactive
    onHolderChanged: due.restart()
    onHeightChanged: due.restart()
    onContentHeightChanged: due.restart()
    T.ScrollBar.vertical: Scroller {
        scrolls: pane.scrolls
        shown: pane.interactive
    }

    // Once all of it stands in its place.
    Timer {
        id: due
        interval: 0
        onTriggered: pane.showHolder()
    }
    Column {
        id: body
        x: pane.ringRoom
        y: pane.ringRoom
        width: pane.width - 2 * x
    }
}
