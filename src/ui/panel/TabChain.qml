import QtQuick

// The order in which Tab leads through the panel, for those controls that forward their keys here:
// the composer, then the conversation from its end upwards. The tree of items has another one.
Item {
    id: chain

    required property Composer composer
    required property ConversationView conversation
    required property JumpToLatest jump
    property bool resting: false // Tab then leads where the tree of items has it

    function stops(): var {
        return [...composer.stops(), ...(jump.visible ? [jump] : []), ...conversation.stops()]
    }
    function move(step: int): bool {
        if (resting)
            return false
        const all = stops()
        const at = all.findIndex(item => item.activeFocus)
        if (at < 0)
            return false
        const next = all[(at + step + all.length) % all.length]
        next.forceActiveFocus(step > 0 ? Qt.TabFocusReason : Qt.BacktabFocusReason)
        conversation.reveal(next)
        return true
    }

    Keys.onTabPressed: event => event.accepted = move(1)
    Keys.onBacktabPressed: event => event.accepted = move(-1)
}
