import QtQuick
import Vorq
import Vorq.Native

// A button that says in words what it does.
Control {
    id: button

    enum Look { Secondary, Quiet, Primary }

    property int look: TextButton.Secondary
    property real size: 32
    readonly property int sidePadding: 14
    readonly property color ink: !enabled ? Theme.inkOff : look === TextButton.Primary ? Theme.accentOn
                               : look === TextButton.Quiet ? Theme.accentInk : Theme.ink
    readonly property color fill: look === TextButton.Primary ? (!enabled ? Theme.track : down ? Theme.accentDown : hovered ? Theme.accentHover : Theme.accent)
                                : look === TextButton.Quiet ? (down ? Theme.accentSoft2 : hovered ? Theme.accentSoft : "transparent")
                                : down ? Theme.secondaryDown : hovered ? Theme.secondaryHover : Theme.secondaryFill
    readonly property color filledRim: Theme.high && look === TextButton.Primary ? Theme.strongInk : "transparent"

    implicitWidth: label.implicitWidth + 2 * sidePadding
    implicitHeight: Theme.grown(size)
    tip: help

    background: Squircle {
        radius: Theme.radiusControl
        fillTop: button.fill
        rimTop: button.look === TextButton.Secondary ? Theme.hairline : button.filledRim
        rimBottom: button.look === TextButton.Secondary ? Theme.hairline2 : button.filledRim
    }
    contentItem: Item {
        Txt {
            id: label
            anchors.centerIn: parent
            text: button.text
            font.weight: Font.DemiBold
            color: button.ink
        }
    }
}
