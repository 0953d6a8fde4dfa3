import QtQuick

// Brings the keyboard back to what had it before a popup, with its ring if it had one.
QtObject {
    property Item former: null
    property bool hadRing: false

    // Before the popup shows, with any item of its window.
    function remember(item: Item) {
        former = item?.Window.activeFocusItem ?? null
        hadRing = former?.visualFocus ?? false
    }
    function bringBack() {
        if (former && former.visible && former.enabled)
            former.forceActiveFocus(hadRing ? Qt.TabFocusReason : Qt.PopupFocusReason)
        former = null
    }
}
