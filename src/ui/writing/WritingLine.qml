import QtQuick
import Vorq

// A line that says what became of something.
Item {
    id: line

    property string iconName: ""
    property string text: ""
    property color ink: Theme.ink
    property int role: Accessible.StaticText
    readonly property int iconSize: Theme.grown(15)

    implicitHeight: Math.max(iconSize, words.height)
    Accessible.role: role
    Accessible.name: text
    Accessible.ignored: !visible

    Ico {
        anchors.left: parent.left
        y: Math.max(0, (Math.min(words.height, line.iconSize + Theme.space1) - height) / 2)
        name: line.iconName
        size: line.iconSize
        color: line.ink
    }
    Txt {
        id: words
        anchors.left: parent.left
        anchors.leftMargin: line.iconSize + Theme.space2 - 2
        anchors.right: parent.right
        text: line.text
        size: Theme.metaSize
        leading: Theme.captionLeading
        font.weight: Font.Medium
        color: line.ink
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        Accessible.ignored: true
    }
}
