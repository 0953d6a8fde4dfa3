pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// Something is on its way: three slanted bars breathe in turn.
Item {
    id: work

    property real size: 16 // of a bar
    property bool running: true
    readonly property int bars: 3
    readonly property real step: size * 0.375
    readonly property real dimmed: 0.34

    implicitWidth: size * 1.375
    implicitHeight: size

    Repeater {
        model: work.bars

        IconPainter {
            id: blade

            required property int index

            x: index * work.step
            width: work.size
            height: work.size
            name: "blade"
            color: index === work.bars - 1 ? Theme.ember : Theme.accentInk
            opacity: Motion.reduced ? 1 : work.dimmed

            SequentialAnimation on opacity {
                running: work.running && work.visible && !Motion.reduced
                loops: Animation.Infinite
                PauseAnimation { duration: blade.index * Motion.workStagger }
                NumberAnimation { to: 1; duration: Motion.workRise; easing.type: Easing.InOutSine }
                NumberAnimation { to: work.dimmed; duration: Motion.workFall; easing.type: Easing.InOutSine }
                PauseAnimation { duration: (work.bars - 1 - blade.index) * Motion.workStagger }
            }
        }
    }
}
