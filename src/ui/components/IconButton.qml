import QtQuick
import Vorq
import Vorq.Native

// A round button with an icon.
Control {
    id: button

    enum Look { Plain, Soft, Accent }

    required property string iconName
    property int look: IconButton.Plain
    property real size: 32
    property real iconSize: Math.round(size * 0.56)
    property real iconRotation: 0
    property real slack: 0 // the part of the size around the icon that shows nothing
    readonly property bool isAccent: look === IconButton.Accent
    readonly property color ink: !enabled ? (isAccent ? Theme.accentOff : Theme.inkOff)
                               : isAccent ? Theme.accentOn
                               : checked ? Theme.accentInk
                               : hovered || down || look === IconButton.Soft ? Theme.ink : Theme.ink2
    readonly property color fill: isAccent ? (!enabled ? Theme.track : down ? Theme.accentDown : hovered ? Theme.accentHover : Theme.accent)
                                : look === IconButton.Soft ? (down ? Qt.tint(Theme.track, Theme.pressed) : hovered ? Qt.tint(Theme.track, Theme.hover) : Theme.track)
                                : down ? Theme.pressed : hovered ? Theme.hover : "transparent"

    implicitWidth: size
    implicitHeight: size
    tip: help !== "" ? help : text
    ringRadius: width / 2
    ringGap: Theme.ringGap - slack
    scale: down ? Motion.pressScale : 1

    Behavior on scale {
        enabled: !Motion.reduced
        NumberAnimation { duration: Motion.press; easing.type: Easing.OutCubic }
    }

    background: Item {
        Squircle {
            anchors.fill: parent
            anchors.margins: button.slack
            radius: width / 2
            smoothing: 0
            fillTop: button.fill
            rimTop: button.isAccent && button.enabled ? Theme.accentRimTop : "transparent"
            rimBottom: button.isAccent && button.enabled ? Theme.accentRimBottom : "transparent"
        }
    }
    contentItem: Item {
        Ico {
            anchors.centerIn: parent
            name: button.iconName
            size: button.iconSize
            color: button.ink
            rotation: button.iconRotation
            Behavior on rotation {
                enabled: !Motion.reduced
                NumberAnimation { duration: Motion.move; easing.type: Easing.OutCubic }
            }
        }
    }
}
