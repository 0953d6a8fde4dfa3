import QtQuick
import Vorq

// The soft shadow of what it stands under.
BorderImage {
    id: shadow

    required property Item target
    property int level: 2
    property int radius: Theme.radiusCard
    readonly property int margin: Theme.shadowMargin(level)
    readonly property int smallestEdge: 4
    // The slices of the image must not meet.
    readonly property int edge: Math.max(smallestEdge, Math.min(radius * 2, Math.floor(Math.min(target.width, target.height) / 2) - 1))
    readonly property bool fits: target.width > 2 * smallestEdge && target.height > 2 * smallestEdge

    z: -1
    anchors.fill: target
    anchors.margins: -margin
    source: fits ? "image://shadow/" + radius + "/" + edge + "/" + margin + "/" + Theme.shadow(level) : ""
    border {
        left: margin + edge
        right: margin + edge
        top: margin + edge
        bottom: margin + edge
    }
    smooth: true
}
