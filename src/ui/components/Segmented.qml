pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// A few choices beside each other, of which one holds, or below each other where they do not fit. Tab leads
// to the one that is chosen; the arrows, Home and End choose another.
Squircle {
    id: choice

    required property string name // of what is chosen, for screen readers
    required property list<string> labels
    property list<string> icons: []
    property int index: 0
    property int stop: 0 // where Tab leads
    property bool isEven: false // all as wide as the widest
    property real size: 30
    readonly property int inset: 2
    readonly property list<real> widths: Array.from({ length: segments.count }, (none, i) => segments.itemAt(i)?.implicitWidth ?? 0)
    readonly property real natural: isEven ? Math.max(0, ...widths) * labels.length : widths.reduce((sum, each) => sum + each, 0)
    readonly property real room: width - 2 * inset
    readonly property bool isStacked: natural > Math.ceil(room)
    readonly property real line: Theme.grown(size) - 2 * inset

    // The user's choice. Whoever keeps it sets `index`.
    signal chosen(int index)

    function choose(wanted: int) {
        const next = Math.max(0, Math.min(labels.length - 1, wanted))
        if (next !== index)
            chosen(next)
    }
    // The keyboard goes first: a control that has it stays a stop of Tab.
    function moveStop() {
        if (segments.itemAt(stop)?.activeFocus ?? false)
            segments.itemAt(index)?.forceActiveFocus(Qt.TabFocusReason)
        stop = Math.max(0, index)
    }

    implicitWidth: natural + 2 * inset
    implicitHeight: line * (isStacked ? labels.length : 1) + 2 * inset
    radius: Theme.radiusControl
    fillTop: Theme.track
    rimTop: Theme.high ? Theme.strongInk : "transparent"
    rimBottom: rimTop
    onIndexChanged: moveStop()
    Component.onCompleted: moveStop()
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    Grid {
        anchors.fill: parent
        anchors.margins: choice.inset
        columns: choice.isStacked ? 1 : choice.labels.length

        Repeater {
            id: segments
            model: choice.labels

            Segment {
                id: segment

                required property int index
                required property string modelData
                readonly property int forward: mirrored ? -1 : 1

                width: choice.isStacked ? choice.room : choice.isEven ? choice.room / choice.labels.length : implicitWidth
                height: choice.line
                text: modelData
                iconName: choice.icons[index] ?? ""
                isChosen: index === choice.index
                focusPolicy: index === choice.stop ? Qt.TabFocus : Qt.NoFocus
                onClicked: choice.choose(index)
                Keys.onLeftPressed: choice.choose(index - forward)
                Keys.onRightPressed: choice.choose(index + forward)
                Keys.onUpPressed: choice.choose(index - 1)
                Keys.onDownPressed: choice.choose(index + 1)
                Keys.onPressed: event => {
                    event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End
                    if (event.accepted)
                        choice.choose(event.key === Qt.Key_Home ? 0 : choice.labels.length - 1)
                }
            }
        }
    }
}
