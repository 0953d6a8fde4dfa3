import QtQuick
import Vorq
import Vorq.Native

// The soft shadow of what it stands under.
ShadowPlate {
    id: shadow

    required property Item target
    property int level: 2
    readonly property int smallestEdge: 4

    z: -1
    anchors.fill: target
    anchors.margins: -margin
    radius: Theme.radiusCard
    margin: Theme.shadowMargin(level)
    // The slices of the picture must not meet.
    edge: Math.max(smallestEdge, Math.min(radius * 2, Math.floor(Math.min(target.width, target.height) / 2) - 1))
    layers: Theme.shadow(level)
}
