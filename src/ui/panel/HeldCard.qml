import QtQuick
import Vorq
import Vorq.Native

// What was highlighted and reads like a secret: dots in its place, and what shall become of it. The
// number of dots tells nothing of its length.
Item {
    id: card

    required property PanelViewModel panel
    property Item tabs: null // takes the keys of all controls first
    readonly property int padding: 14
    readonly property int iconSize: 18
    readonly property string dots: "••••••••"
    readonly property string reason: panel.held.from === ""
        ? qsTr("What is highlighted reads like a password or a key.")
        : qsTr("What is highlighted in %1 reads like a password or a key.").arg(panel.held.from)

    // It is gone, and the keyboard was on one of its buttons.
    signal keyboardFreed()

    // What Tab leads to, in its order.
    function stops(): var {
        return visible ? [sender, discarder] : []
    }

    visible: panel.held.isHolding
    onVisibleChanged: if (!visible && (sender.activeFocus || discarder.activeFocus)) keyboardFreed()
    implicitHeight: column.height + 2 * padding
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Held back. %1").arg(reason)

    Squircle {
        anchors.fill: parent
        radius: Theme.radiusComposer
        fillTop: Theme.warnSoft
        rimTop: Theme.faint(Theme.warn, 0.35)
        rimBottom: rimTop
    }
    Column {
        id: column
        x: card.padding
        y: card.padding
        width: parent.width - 2 * card.padding
        spacing: Theme.space2

        Row {
            spacing: Theme.space2

            Ico {
                anchors.verticalCenter: parent.verticalCenter
                name: "lock"
                size: card.iconSize
                color: Theme.warn
            }
            Txt {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Held back: %1").arg(card.dots)
                font.weight: Font.DemiBold
                Accessible.ignored: true
            }
        }
        Txt {
            width: parent.width
            text: card.reason
            size: Theme.metaSize
            leading: Theme.captionLeading
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
        Row {
            anchors.right: parent.right
            spacing: Theme.space2

            TextButton {
                id: sender
                text: qsTr("Send")
                Accessible.name: qsTr("Send what is held back")
                tabs: card.tabs
                onClicked: card.panel.sendHeld()
            }
            TextButton {
                id: discarder
                text: qsTr("Discard")
                Accessible.name: qsTr("Discard what is held back")
                tabs: card.tabs
                onClicked: card.panel.held.discard()
            }
        }
    }
}
