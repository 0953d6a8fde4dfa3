pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// A reply is on its way: three slanted bars breathe in turn, and a label says how far it is.
Row {
    id: line

    property string label: ""
    property bool running: true
    readonly property int bars: 3
    readonly property real dimmed: 0.34

    spacing: Theme.space2 + 2
    Accessible.role: Accessible.StaticText
    Accessible.name: label
    Accessible.ignored: !visible || label === ""

    Item {
        width: 22
        height: 16
        anchors.verticalCenter: parent.verticalCenter

        Repeater {
            model: line.bars

            IconPainter {
                id: blade

                required property int index

                x: index * 6
                width: 16
                height: 16
                name: "blade"
                color: index === line.bars - 1 ? Theme.ember : Theme.accentInk
                opacity: Motion.reduced ? 1 : line.dimmed

                SequentialAnimation on opacity {
                    running: line.running && line.visible && !Motion.reduced
                    loops: Animation.Infinite
                    PauseAnimation { duration: blade.index * Motion.workStagger }
                    NumberAnimation { to: 1; duration: Motion.workRise; easing.type: Easing.InOutSine }
                    NumberAnimation { to: line.dimmed; duration: Motion.workFall; easing.type: Easing.InOutSine }
                    PauseAnimation { duration: (line.bars - 1 - blade.index) * Motion.workStagger }
                }
            }
        }
    }
    Txt {
        anchors.verticalCenter: parent.verticalCenter
        visible: line.label !== ""
        text: line.label
        size: Theme.bodySize
        font.weight: Font.Medium
        color: Theme.look.assistantInk.valid ? Theme.botInk : Theme.ink2
        Accessible.ignored: true
    }
}
