pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// The way through the Hub, as a tape measure: a case that stays, and a tape that runs out of it with the
// pages on it. Tab leads to the case and to the page that is shown; the arrows lead along the tape.
FocusScope {
    id: tape

    required property bool expanded
    required property string current // a segment of the Hub
    required property bool settingsActive
    readonly property list<string> names: ["notes", "chats", "tasks", "trackers", "ai"]
    readonly property list<string> titles: [qsTr("Notes"), qsTr("Chats"), qsTr("Tasks"), qsTr("Trackers"), qsTr("Ask")]
    readonly property list<string> icons: ["note", "history", "tasks", "tracker", "chat"]
    readonly property int settingsIndex: names.length
    readonly property int currentIndex: settingsActive ? settingsIndex : names.indexOf(current)
    readonly property int tickEvery: 8
    readonly property int caseWidth: 48

    signal selected(segment: string)
    signal settingsSelected
    signal toggled

    function choose(index: int) {
        if (index === settingsIndex)
            settingsSelected()
        else
            selected(names[index])
    }
    function moveAlong(from: int, by: int) {
        for (let at = from + by; at >= 0 && at <= settingsIndex; at += by) {
            const next = stations.itemAt(at)
            if (next?.visible) {
                next.forceActiveFocus(Qt.TabFocusReason)
                return
            }
        }
    }

    implicitWidth: caseWidth + strip.width - 10
    implicitHeight: 44
    Accessible.role: Accessible.ToolBar
    Accessible.name: qsTr("Hub navigation")

    Item {
        id: strip
        anchors.left: opener.right
        anchors.leftMargin: -12
        y: 3
        width: row.width + 30
        height: 38

        Shadow {
            target: band
            level: 1
        }
        Squircle {
            id: band
            anchors.fill: parent
            radius: Theme.radiusMenu
            fillTop: Theme.surface
            rimTop: Theme.hairline
            rimBottom: Theme.hairline2
        }
        Repeater {
            model: Math.max(0, Math.floor((strip.width - 34) / tape.tickEvery))

            Rectangle {
                required property int index
                readonly property bool isLong: index % 5 === 0
                x: 20 + index * tape.tickEvery
                y: strip.height - 1.5 - height
                width: 1
                height: isLong ? 6 : 3
                color: Theme.faint(Theme.ink, isLong ? 0.26 : 0.15)
            }
        }
        Row {
            id: row
            x: 16
            y: 3
            spacing: 2

            Repeater {
                id: stations
                model: tape.settingsIndex + 1

                TapeSegment {
                    required property int index
                    readonly property int forward: mirrored ? -1 : 1
                    readonly property bool isSettings: index === tape.settingsIndex
                    visible: tape.expanded || isCurrent
                    isCurrent: index === tape.currentIndex
                    text: isSettings ? qsTr("Settings") : tape.titles[index]
                    iconName: isSettings ? "sliders" : tape.icons[index]
                    focusPolicy: isCurrent ? Qt.TabFocus : Qt.NoFocus
                    onClicked: tape.choose(index)
                    Keys.onLeftPressed: tape.moveAlong(index, -forward)
                    Keys.onRightPressed: tape.moveAlong(index, forward)
                }
            }
        }
        // What keeps the tape from slipping into its case.
        Rectangle {
            anchors.horizontalCenter: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: 4
            height: 44
            radius: 2
            color: Theme.tapeHook
        }
    }
    Control {
        id: opener
        anchors.left: parent.left
        width: tape.caseWidth
        height: tape.height
        text: tape.expanded ? qsTr("Close hub navigation") : qsTr("Open hub navigation")
        tip: text
        ringRadius: Theme.radiusRow
        onClicked: tape.toggled()
        background: Item {
            Shadow {
                target: plate
                level: 1
                radius: Theme.radiusRow
            }
            Squircle {
                id: plate
                anchors.fill: parent
                radius: Theme.radiusRow
                fillTop: Theme.caseTop
                fillBottom: Theme.caseBottom
                rimTop: Theme.floatRimTop
                rimBottom: Theme.floatRimBottom
                hairline: Theme.floatHairline
            }
        }
        contentItem: Item {
            Ico {
                anchors.centerIn: parent
                name: "mark"
                size: 22
            }
        }
    }
}
