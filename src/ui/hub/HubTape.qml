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
    readonly property int overlap: 12 // of the case and the tape
    readonly property int hookRoom: 2 // beyond the end of the tape

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

    implicitWidth: caseWidth - overlap + strip.width + hookRoom
    implicitHeight: 44
    Accessible.role: Accessible.ToolBar
    Accessible.name: qsTr("Hub navigation")
    onCurrentIndexChanged: due.restart()

    Flickable {
        id: run
        anchors.left: opener.right
        anchors.leftMargin: -tape.overlap
        width: tape.width - tape.caseWidth + tape.overlap
        height: tape.height
        contentWidth: strip.width + tape.hookRoom
        interactive: contentWidth > width
        clip: interactive
        boundsBehavior: Flickable.StopAtBounds
        onWidthChanged: due.restart()
        onContentWidthChanged: due.restart()

        // What the case covers counts as hidden.
        function show(station: Item) {
            if (!station)
                return
            const x = station.mapToItem(contentItem, 0, 0).x
            const end = x + station.width + tape.overlap
            scrollTo(Math.max(end - width, Math.min(contentX, x - tape.overlap)))
        }
        function scrollTo(x: real) {
            contentX = Math.max(0, Math.min(x, contentWidth - width))
        }

        // Once all of it stands in its place.
        Timer {
            id: due
            interval: 0
            onTriggered: run.show(stations.itemAt(tape.currentIndex))
        }
        WheelHandler {
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
            enabled: run.interactive
            onWheel: event => run.scrollTo(run.contentX - (event.pixelDelta.y || event.angleDelta.y))
        }
        Item {
            id: strip
            x: opener.mirrored ? tape.hookRoom : 0
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
                        onActiveFocusChanged: if (activeFocus) run.show(this)
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
