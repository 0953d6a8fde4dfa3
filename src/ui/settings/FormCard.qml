import QtQuick
import Vorq
import Vorq.Native

// A card with fields.
Item {
    id: card

    default property alias fields: column.data
    readonly property int pad: 20

    implicitHeight: column.height + 2 * pad

    Shadow {
        target: plate
        level: 1
    }
    Squircle {
        id: plate
        anchors.fill: parent
        radius: Theme.radiusCard
        fillTop: Theme.surface
        rimTop: Theme.hairline
        rimBottom: Theme.hairline2
    }
    Column {
        id: column
        x: card.pad
        y: card.pad
        width: parent.width - 2 * card.pad
        spacing: Theme.space4
    }
}
