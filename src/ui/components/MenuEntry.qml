import QtQuick
import QtQuick.Templates as T
import Vorq
import Vorq.Native

// A choice of a `Menu`.
T.MenuItem {
    id: entry

    property int role: Accessible.MenuItem
    property string sub: ""
    property string status: "" // in words, at the end
    property bool isDanger: false
    property bool isMarked: false // by a check; whoever keeps what is chosen sets it
    readonly property bool hasMarks: (menu as Menu)?.hasMarks ?? false
    readonly property int sideRoom: 10
    readonly property int markRoom: Theme.grown(16)
    readonly property int corner: 8
    readonly property int markSize: Theme.grown(14)
    readonly property real textStart: sideRoom + (hasMarks ? markRoom : 0)
    readonly property real statusRoom: status !== "" ? statusText.implicitWidth + Theme.space5 : 0
    readonly property bool isLit: enabled && (highlighted || down) // the mouse highlights what it comes to
    readonly property string cutSub: subText.truncated ? sub : ""
    readonly property string cutWords: !name.truncated ? cutSub : cutSub === "" ? text : text + "\n" + cutSub
    readonly property color ink: !enabled ? Theme.inkOff : isLit ? Theme.accentOn : isDanger ? Theme.bad : Theme.ink
    readonly property color softInk: !enabled ? Theme.inkOff : isLit ? Theme.accentOn : Theme.ink2

    // By whatever way, once the menu is closed and the keyboard is back where it was.
    signal chosen

    implicitWidth: Math.ceil(Math.max(name.implicitWidth, subText.implicitWidth) + textStart + sideRoom + statusRoom)
    implicitHeight: sub !== "" ? Theme.grown(44) : Theme.grown(30)
    hoverEnabled: true
    Accessible.role: role
    Accessible.name: status !== "" ? qsTr("%1, %2").arg(text).arg(status) : text
    Accessible.description: sub
    Accessible.checkable: hasMarks
    Accessible.checked: isMarked
    Keys.onReturnPressed: press()
    Keys.onEnterPressed: press()
    onTriggered: press()

    function press() {
        if (enabled)
            (menu as Menu)?.choose(entry)
    }

    background: Squircle {
        radius: entry.corner
        fillTop: entry.isLit ? Theme.accent : "transparent"
        rimTop: Theme.high && entry.isLit ? Theme.strongInk : "transparent"
        rimBottom: rimTop
    }
    indicator: Ico {
        x: entry.mirrored ? parent.width - entry.sideRoom - width + 2 : entry.sideRoom - 2
        y: (parent.height - height) / 2
        visible: entry.isMarked && entry.hasMarks
        name: "check"
        size: entry.markSize
        color: entry.ink
    }
    contentItem: Item {
        Tip {
            owner: entry
            words: entry.cutWords
            wanted: entry.highlighted
        }
        Column {
            anchors.left: parent.left
            anchors.leftMargin: entry.textStart
            anchors.right: parent.right
            anchors.rightMargin: entry.sideRoom + entry.statusRoom
            anchors.verticalCenter: parent.verticalCenter
            spacing: 1

            Txt {
                id: name
                width: parent.width
                text: entry.text
                font.weight: Font.Medium
                color: entry.ink
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignLeft
                Accessible.ignored: true
            }
            Txt {
                id: subText
                width: parent.width
                visible: text !== ""
                text: entry.sub
                size: Theme.badgeSize
                color: entry.softInk
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignLeft
                Accessible.ignored: true
            }
        }
        Txt {
            id: statusText
            anchors.right: parent.right
            anchors.rightMargin: entry.sideRoom
            anchors.verticalCenter: parent.verticalCenter
            visible: text !== ""
            text: entry.status
            size: Theme.captionSize
            font.weight: Font.Medium
            color: entry.softInk
            Accessible.ignored: true
        }
    }
}
