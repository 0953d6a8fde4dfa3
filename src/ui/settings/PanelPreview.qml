pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// What the panel looks like now: its own theme, glass and colours, whatever those of the window.
Column {
    id: preview

    readonly property ThemeTokens tokens: ThemeTokens {
        look: App.settings.panelLook
    }
    readonly property int edge: 12
    readonly property int sheetHeight: 430
    readonly property int sheetRadius: 30
    readonly property int topRoom: 18
    readonly property int composerHeight: 52
    readonly property int composerPad: 14
    readonly property int buttonSize: 32

    width: Math.min(320, parent?.width ?? 320)
    spacing: Theme.space2

    component Block: Item {
        id: block

        property alias words: label.text
        property color fill
        property color fillTop: fill
        property color rim
        property color ink
        property bool isHugging: false
        property real widest: parent.width

        width: isHugging ? Math.min(widest, label.implicitWidth + 28) : widest
        height: label.height + 24

        Squircle {
            anchors.fill: parent
            radius: Theme.radiusBlock
            fillTop: block.fillTop
            fillBottom: block.fill
            rimTop: block.rim
            rimBottom: block.rim
        }
        Txt {
            id: label
            x: 14
            y: 12
            width: Math.min(Math.ceil(implicitWidth), block.widest - 28)
            size: Theme.rowSize
            leading: Theme.bubbleLeading
            font.weight: Font.Medium
            color: block.ink
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
    }

    Txt {
        width: parent.width
        leftPadding: Theme.space1
        text: qsTr("Preview")
        size: Theme.metaSize
        font.weight: Font.DemiBold
        color: Theme.ink2
        horizontalAlignment: Text.AlignLeft
        Accessible.ignored: true
    }
    Glass {
        width: parent.width
        height: Math.max(preview.sheetHeight, said.height + preview.topRoom + composer.height + 2 * preview.edge)
        tokens: preview.tokens
        radius: preview.sheetRadius
        casts: true
        elevation: 2
        Accessible.role: Accessible.Graphic
        Accessible.name: qsTr("Preview of Vorq's window")

        Column {
            id: said
            x: preview.edge
            y: preview.topRoom
            width: parent.width - 2 * preview.edge
            spacing: 10

            Block {
                words: qsTr("Hello 👋, Vorq here…")
                isHugging: true
                fill: preview.tokens.botBlock
                rim: preview.tokens.botBlockRim
                ink: preview.tokens.botInk
            }
            Block {
                anchors.right: parent?.right
                words: qsTr("What does the passage argue?")
                isHugging: true
                widest: 240
                fill: preview.tokens.userBlock
                fillTop: Qt.lighter(preview.tokens.userBlock, preview.tokens.userBlockLift)
                rim: preview.tokens.userBlockRim
                ink: preview.tokens.userInk
            }
            Block {
                words: qsTr("That a leaf is built for a canopy that flickers, not for the brightest minute of the day.")
                fill: preview.tokens.botBlock
                rim: preview.tokens.botBlockRim
                ink: preview.tokens.botInk
            }
        }
        Squircle {
            id: composer
            x: preview.edge
            y: parent.height - preview.edge - height
            width: parent.width - 2 * preview.edge
            height: Math.max(preview.composerHeight, placeholder.height + 2 * preview.composerPad)
            radius: Theme.radiusBlock
            fillTop: preview.tokens.fieldFill
            rimTop: preview.tokens.fieldRim
            rimBottom: rimTop

            Repeater {
                model: ["plus", "send"]

                Squircle {
                    id: button
                    required property string modelData
                    required property int index
                    x: index === 0 ? 10 : parent.width - width - 10
                    anchors.verticalCenter: parent.verticalCenter
                    width: preview.buttonSize
                    height: preview.buttonSize
                    radius: width / 2
                    smoothing: 0
                    fillTop: preview.tokens.track

                    Ico {
                        anchors.centerIn: parent
                        name: button.modelData
                        size: 18
                        color: button.index === 0 ? preview.tokens.ink : preview.tokens.accentOff
                    }
                }
            }
            Txt {
                id: placeholder
                anchors.verticalCenter: parent.verticalCenter
                x: preview.buttonSize + 20
                width: parent.width - 2 * x
                text: qsTr("Ask Vorq for help…")
                size: Theme.bodySize
                color: preview.tokens.ink3
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
        }
    }
}
