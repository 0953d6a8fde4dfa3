import QtQuick
import Vorq
import Vorq.Native

// The menu of a text, in the look of the panel.
ContextMenu {
    groundTop: Theme.floatTop
    groundBottom: Theme.floatBottom
    edge: Theme.menuEdge
    rule: Theme.hairline2
    ink: Theme.ink
    inkOff: Theme.inkOff
    highlight: Theme.accent
    highlightInk: Theme.accentOn
    font.family: Theme.sans
    font.pointSize: Theme.points(Theme.controlSize)
    font.weight: Font.Medium
    rowHeight: Theme.grown(30)
    leastWidth: Theme.grown(160)
    isRounded: !Theme.opaque

    // The key of menus, or what stands in for it on keyboards without one.
    function isAskedForBy(event): bool {
        return event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier)
    }
}
