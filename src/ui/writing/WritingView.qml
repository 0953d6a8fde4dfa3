import QtQuick
import Vorq
import Vorq.Native

// The window of the writing tools: a card beside a selection of another application, and the arrow that
// points at it. Around the card is room for its shadow.
FocusScope {
    id: view

    readonly property WritingCard card: App.writing
    readonly property int cardWidth: Theme.grown(372)
    readonly property int arrowHeight: arrow.height - arrow.overlap
    readonly property real contentHeight: content.height + 2 * content.edge

    // Of the callout, without the room around it.
    implicitWidth: cardWidth
    implicitHeight: contentHeight + arrowHeight
    focus: true
    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.Dialog
    Accessible.name: qsTr("Rewrite")

    // What has changed has its size at once, and not with the next frame.
    function layOut() {
        content.layOut()
    }

    // Without translucency the window is cut out by whole pixels: what the card and its arrow cover in
    // part on their edge must not show the black beneath.
    Rectangle {
        anchors.fill: parent
        visible: Theme.opaque
        color: Qt.tint(Theme.floatTop, Theme.floatHairline)
    }
    Glass {
        id: glass
        x: view.card.margin
        y: view.card.margin + (view.card.arrowPointsUp ? view.arrowHeight : 0)
        width: view.cardWidth
        height: view.contentHeight
        floats: true
        density: Theme.overlayAlpha
        radius: Theme.radiusComposer
        elevation: 2

        WritingContent {
            id: content
            x: edge
            y: edge
            width: parent.width - 2 * edge
            focus: true
            card: view.card
        }
        HoverHandler {
            onHoveredChanged: view.card.isHovered = hovered
        }
    }
    SelectionCalloutArrow {
        id: arrow
        x: glass.x + view.card.tipX - width / 2
        y: pointsUp ? glass.y - view.arrowHeight : glass.y + glass.height - overlap
        pointsUp: view.card.arrowPointsUp
    }
    Announcement {
        id: announcement
    }
    Connections {
        target: view.card
        function onAnnounced(words) {
            announcement.say(words)
        }
    }
}
