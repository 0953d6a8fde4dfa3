import QtQuick
import Vorq
import Vorq.Native

// The menu of a text, in the look of the panel.
ContextMenu {
    ground: Theme.floatTop
    edge: Theme.high ? Theme.strongInk : Theme.surface3
    ink: Theme.ink
    inkOff: Theme.inkOff
    highlight: Theme.accent
    highlightInk: Theme.accentOn
    font.family: Theme.sans
    font.pointSize: Theme.points(Theme.controlSize)
    font.weight: Font.Medium
    rowHeight: Theme.grown(30)
    isRounded: !Theme.opaque
}
