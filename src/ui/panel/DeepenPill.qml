import QtQuick
import Vorq
import Vorq.Native

// Floats above the selected span. It never takes the keyboard, which would drop the selection.
Control {
    id: pill

    required property PanelSelectionBridge selection
    property real lowest: parent?.height ?? 0 // where what covers the text begins
    readonly property int above: 8
    readonly property int pastEnd: 12
    readonly property int sideRoom: 14
    readonly property int topRoom: 10
    readonly property rect anchor: selection.selectionBounds
    readonly property real aboveY: anchor.y - above - height

    x: Math.max(sideRoom, Math.min(anchor.x + anchor.width + pastEnd - width, (parent?.width ?? 0) - sideRoom - width))
    y: aboveY >= topRoom ? aboveY : anchor.y + anchor.height + above
    visible: selection.hasSelection && anchor.width > 0 && anchor.y + anchor.height > 0 && anchor.y < lowest
    text: qsTr("Deepen")
    implicitHeight: Theme.grown(34)
    implicitWidth: row.implicitWidth + 2 * sideRoom
    focusPolicy: Qt.NoFocus
    onClicked: selection.commitDeepen()
    Accessible.name: qsTr("Deepen the selected text")

    Binding {
        target: pill.selection
        property: "pillHitFrame"
        value: pill.visible ? Qt.rect(pill.x, pill.y, pill.width, pill.height) : Qt.rect(0, 0, 0, 0)
    }

    // A press that just misses the pill must not take what it is about.
    MouseArea {
        anchors.fill: parent
        anchors.margins: -pill.selection.pillSlack
        z: -1
        acceptedButtons: Qt.AllButtons
        cursorShape: Qt.ArrowCursor
    }
    background: Item {
        Shadow {
            target: parent
            level: 2
            radius: pill.height / 2
        }
        Squircle {
            anchors.fill: parent
            radius: pill.height / 2
            smoothing: 0
            fillTop: pill.down ? Theme.pillDown : Theme.pillTop
            fillBottom: Theme.pillBottom
            rimTop: Theme.pillRimTop
            rimBottom: Theme.pillRimBottom
            hairline: Theme.pillHairline
        }
    }
    contentItem: Item {
        Row {
            id: row
            anchors.centerIn: parent
            spacing: 7

            Ico {
                anchors.verticalCenter: parent.verticalCenter
                name: "deepen"
                size: 15
                color: Theme.pillIcon
            }
            Txt {
                anchors.verticalCenter: parent.verticalCenter
                text: pill.text
                font.weight: Font.DemiBold
                color: Theme.pillInk
            }
        }
    }
}
