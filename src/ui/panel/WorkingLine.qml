import QtQuick
import Vorq

// A reply is on its way: the bars breathe, and a label says how far it is.
Row {
    id: line

    property string label: ""
    property bool running: true

    spacing: Theme.space2 + 2
    Accessible.role: Accessible.StaticText
    Accessible.name: label
    Accessible.ignored: !visible || label === ""

    WorkBars {
        anchors.verticalCenter: parent.verticalCenter
        running: line.running
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
