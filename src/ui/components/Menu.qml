import QtQuick
import QtQuick.Templates as T
import Vorq

// A menu within the window, of `MenuEntry`s and `MenuRule`s. The arrows, Home, End and the first letter
// of an entry lead to it, Return and Space choose it, Escape closes the menu.
T.Menu {
    id: menu

    property string name: "" // for screen readers
    property bool hasMarks: false // room for a check mark before the words
    readonly property int inset: 6
    readonly property int leastWidth: Theme.grown(160)
    readonly property int edgeRoom: 8 // to the edges of the window
    readonly property KeyboardReturn keyboard: KeyboardReturn {}
    property real widest: 0 // of its entries
    property MenuEntry choice: null // until the menu is closed

    function measure() {
        let wide = 0
        for (let i = 0; i < count; ++i)
            wide = Math.max(wide, itemAt(i)?.implicitWidth ?? 0)
        widest = wide
    }
    // What the entry does comes last: it may give the keyboard to something that the menu knows nothing of.
    function choose(entry: MenuEntry) {
        choice = entry
        dismiss()
    }
    function finish() {
        const chosen = choice
        choice = null
        keyboard.bringBack()
        chosen?.chosen()
    }
    function isChoice(item): bool {
        return item instanceof MenuEntry && item.enabled
    }
    // The next choice from an index on, round the end.
    function lead(from: int, step: int, wanted: string) {
        for (let i = 0; i < count; ++i) {
            const at = (from + i * step + 2 * count) % count
            const item = itemAt(at)
            if (isChoice(item) && item.text.toLowerCase().startsWith(wanted)) {
                currentIndex = at
                item.forceActiveFocus(Qt.TabFocusReason)
                return
            }
        }
    }
    function pressKey(event) {
        const letter = event.text.trim().toLowerCase()
        const isPlain = !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))
        event.accepted = true
        if (event.key === Qt.Key_Home)
            lead(0, 1, "")
        else if (event.key === Qt.Key_End)
            lead(count - 1, -1, "")
        else if (event.key === Qt.Key_Down)
            lead(currentIndex + 1, 1, "")
        else if (event.key === Qt.Key_Up)
            lead(currentIndex < 0 ? count - 1 : currentIndex - 1, -1, "")
        else if (letter !== "" && letter >= " " && isPlain)
            lead(currentIndex + 1, 1, letter)
        else
            event.accepted = false
    }

    padding: inset
    margins: edgeRoom
    implicitWidth: Math.max(leastWidth, widest + 2 * inset)
    implicitHeight: contentHeight + 2 * inset
    contentHeight: view.contentHeight
    modal: false
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    onAboutToShow: {
        measure()
        keyboard.remember(parent)
    }
    onClosed: finish()
    onCountChanged: measure()

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Motion.press }
    }
    background: Glass {
        floats: true
        radius: Theme.radiusMenu
        elevation: 3
    }
    contentItem: ListView {
        id: view
        focus: true
        model: menu.contentModel
        currentIndex: menu.currentIndex
        keyNavigationEnabled: false
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        clip: interactive
        LayoutMirroring.enabled: Theme.isMirrored
        LayoutMirroring.childrenInherit: true
        Accessible.role: Accessible.PopupMenu
        Accessible.name: menu.name
        Keys.onPressed: event => menu.pressKey(event)
    }
}
