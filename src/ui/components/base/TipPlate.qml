import QtQuick
import Vorq
import Vorq.Native

// The words of a tip, above what they are about or else below it, within the window.
Item {
    id: plate

    required property Item owner
    required property string words
    readonly property int sidePadding: 10
    readonly property int endPadding: 6
    readonly property int widest: 260
    readonly property int gap: 6
    readonly property int room: 8 // to the edges of the window
    readonly property point at: owner.mapToItem(parent, 0, 0)
    readonly property real middle: at.x + owner.width / 2 - width / 2
    readonly property real above: at.y - gap - height

    x: Math.round(Math.max(room, Math.min(middle, parent.width - room - width)))
    y: Math.round(above >= room ? above : at.y + owner.height + gap)
    z: 1000002 // over menus and sheets, whose layer Qt puts at 1000001
    width: text.width + 2 * sidePadding
    height: text.height + 2 * endPadding
    opacity: 0
    Accessible.ignored: true // the control says it itself
    Component.onCompleted: opacity = 1

    Behavior on opacity {
        NumberAnimation { duration: Motion.hover; easing.type: Easing.OutQuad }
    }

    Shadow {
        target: plate
        level: 2
        radius: Theme.radiusControl
    }
    Squircle {
        anchors.fill: parent
        radius: Theme.radiusControl
        fillTop: Theme.tipFill
        rimTop: Theme.floatRimTop
        rimBottom: Theme.floatRimBottom
        hairline: Theme.floatHairline
    }
    Txt {
        id: text
        x: plate.sidePadding
        y: plate.endPadding
        width: Math.min(implicitWidth, plate.widest)
        text: plate.words
        size: Theme.captionSize
        font.weight: Font.Medium
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
}
