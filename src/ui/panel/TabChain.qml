import QtQuick
import Vorq

// The order in which Tab leads through the panel, for those controls that forward their keys here:
// the composer, what is held back, then the conversation from its end upwards. The tree of items has
// another one.
Item {
    id: chain

    required property Composer composer
    required property ConversationView conversation
    required property JumpToLatest jump
    required property HeldCard held
    required property AttachTray tray
    readonly property bool trayIsOpen: composer.panel.tray.isShown

    // The tray comes right after the button that opened it.
    function stops(): var {
        const own = composer.stops()
        const inTray = trayIsOpen ? tray.stops() : []
        return [...own.slice(0, 2), ...inTray, ...own.slice(2), ...held.stops(), ...(jump.visible ? [jump] : []), ...conversation.stops()]
    }
    function move(all: var, step: int): bool {
        const at = all.findIndex(item => item.activeFocus)
        if (at < 0)
            return false
        const next = all[(at + step + all.length) % all.length]
        next.forceActiveFocus(step > 0 ? Qt.TabFocusReason : Qt.BacktabFocusReason)
        conversation.reveal(next)
        return true
    }

    Keys.onTabPressed: event => event.accepted = move(stops(), 1)
    Keys.onBacktabPressed: event => event.accepted = move(stops(), -1)
    Keys.onDownPressed: event => event.accepted = trayIsOpen && move(tray.stops(), 1)
    Keys.onUpPressed: event => event.accepted = trayIsOpen && move(tray.stops(), -1)

    Connections {
        target: chain.composer.panel.tray
        function onShownChanged() {
            if (chain.trayIsOpen && chain.composer.attachButton.visualFocus)
                chain.tray.stops()[0].forceActiveFocus(Qt.TabFocusReason)
            else if (!chain.trayIsOpen && !chain.composer.attachButton.activeFocus)
                chain.composer.focusPrompt() // what had the keyboard goes with the tray
        }
    }
}
