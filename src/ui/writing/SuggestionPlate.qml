import QtQuick
import QtQuick.Templates as T
import Vorq
import Vorq.Native

// The suggestion, with what is different from the original marked in it, or that it is on its way.
Item {
    id: plate

    required property WritingCard card
    readonly property int sidePadding: 13
    readonly property int endPadding: 11
    readonly property int tallest: Theme.grown(232)
    readonly property int workingHeight: Theme.grown(44)

    implicitHeight: card.isWorking ? workingHeight : Math.min(tallest, words.height + 2 * endPadding)

    Squircle {
        anchors.fill: parent
        radius: Theme.radiusRow
        fillTop: Theme.plate
        rimTop: Theme.hairline
        rimBottom: Theme.hairline
    }
    WorkingLine {
        x: plate.sidePadding
        anchors.verticalCenter: parent.verticalCenter
        visible: plate.card.isWorking
        running: visible
        label: qsTr("Working…")
    }
    Flickable {
        id: pane
        anchors.fill: parent
        anchors.margins: 1
        visible: !plate.card.isWorking
        contentHeight: words.height + 2 * plate.endPadding - 2
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        clip: interactive
        T.ScrollBar.vertical: Scroller {
            scrolls: qsTr("Scroll the suggestion")
            shown: pane.interactive
        }

        Txt {
            id: words
            x: plate.sidePadding - 1
            y: plate.endPadding - 1
            width: pane.width - 2 * x
            text: plate.card.suggestion === "" ? "" : (plate.card.showsDifference, plate.card.markup(Theme.bad, Theme.ok))
            textFormat: Text.StyledText
            size: Theme.bodySize
            leading: Theme.bubbleLeading
            font.weight: Font.Medium
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: plate.card.suggestion
            Accessible.description: plate.card.spokenDifference
        }
    }
    Connections {
        target: plate.card
        function onSuggestionChanged() {
            pane.contentY = 0
        }
    }
}
