import QtQuick

// Brings the keyboard back to what had it before a popup, with its ring if it had one.
QtObject {
    property Item watched: null // any item of the popup's window
    readonly property Item holder: watched?.Window.activeFocusItem ?? null // none while the window is behind others
    property Item latest: null
    property Item former: null
    property bool hadRing: false

    onHolderChanged: if (holder) latest = holder

    // Before the popup shows.
    function remember(item: Item) {
        former = item?.Window.activeFocusItem ?? latest
        hadRing = former?.visualFocus ?? false
    }
    function bringBack() {
        if (former && former.visible && former.enabled)
            former.forceActiveFocus(hadRing ? Qt.TabFocusReason : Qt.PopupFocusReason)
        latest = former
        former = null
    }
}
