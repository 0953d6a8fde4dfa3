import QtQuick
import Vorq
import Vorq.Native

// A button that says in words what it does.
Control {
    id: button

    enum Look { Secondary, Quiet, Primary, Danger }

    property int look: TextButton.Secondary
    property real size: 32
    property string iconName: ""
    readonly property int iconSize: Theme.grown(15)
    readonly property int iconGap: 7
    readonly property real iconRoom: iconName !== "" ? iconSize + iconGap : 0
    readonly property int sidePadding: 14
    readonly property color ink: !enabled ? Theme.inkOff : look === TextButton.Primary ? Theme.accentOn
                               : look === TextButton.Quiet ? Theme.accentInk
                               : look === TextButton.Danger ? Theme.bad : Theme.ink
    readonly property color fill: look === TextButton.Primary ? (!enabled ? Theme.track : down ? Theme.accentDown : hovered ? Theme.accentHover : Theme.accent)
                                : look === TextButton.Quiet ? (down ? Theme.accentSoft2 : hovered ? Theme.accentSoft : "transparent")
                                : look === TextButton.Danger ? (down ? Theme.badDown : hovered ? Theme.badHover : "transparent")
                                : down ? Theme.secondaryDown : hovered ? Theme.secondaryHover : Theme.secondaryFill
    readonly property color filledRim: Theme.high && look === TextButton.Primary ? Theme.strongInk : "transparent"

    implicitWidth: Math.ceil(label.implicitWidth + iconRoom) + 2 * sidePadding
    implicitHeight: Theme.grown(size)
    tip: !label.truncated ? help : help === "" ? text : text + "\n" + help

    background: Squircle {
        radius: Theme.radiusControl
        fillTop: button.fill
        rimTop: button.look === TextButton.Secondary ? Theme.hairline : button.filledRim
        rimBottom: button.look === TextButton.Secondary ? Theme.hairline2 : button.filledRim
    }
    contentItem: Item {
        Row {
            anchors.centerIn: parent
            spacing: button.iconGap

            Ico {
                anchors.verticalCenter: parent.verticalCenter
                visible: button.iconName !== ""
                name: button.iconName
                size: button.iconSize
                color: button.ink
            }
            Txt {
                id: label
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, button.width - 2 * button.sidePadding - button.iconRoom)
                text: button.text
                font.weight: Font.DemiBold
                color: button.ink
                elide: Text.ElideRight
            }
        }
    }
}
