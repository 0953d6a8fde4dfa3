pragma ComponentBehavior: Bound
import QtQuick
import Vorq
import Vorq.Native

// Where what is dropped is attached. While it is held over it, it shows that it would be taken.
FileDrop {
    id: zone

    required property AttachmentIntake intake
    property real radius: Theme.radiusPanel
    property bool isWelcoming: containsDrag
    readonly property int inset: 6
    readonly property int rimWidth: 2
    readonly property int signPadding: 14

    pictureFormat: formats => intake.pictureFormat(formats)
    onFilesDropped: files => intake.attachFiles(files)
    onPictureDropped: (picture, addresses) => {
        if (!intake.attachPicture(picture))
            intake.attachFiles(addresses)
    }

    Squircle {
        anchors.fill: parent
        anchors.margins: zone.inset
        visible: opacity > 0
        opacity: zone.isWelcoming ? 1 : 0
        radius: zone.radius - zone.inset
        fillTop: Theme.accentSoft2
        rimTop: Theme.focus
        rimBottom: Theme.focus
        rimWidth: zone.rimWidth

        Behavior on opacity {
            NumberAnimation { duration: Motion.hover; easing.type: Easing.OutQuad }
        }

        Shadow {
            target: plate
            level: 2
            radius: plate.radius
        }
        Squircle {
            id: plate
            anchors.centerIn: parent
            width: sign.width + 2 * zone.signPadding
            height: sign.height + 2 * zone.signPadding
            radius: Theme.radiusCard
            fillTop: Theme.floatTop
            fillBottom: Theme.floatBottom
            rimTop: Theme.floatRimTop
            rimBottom: Theme.floatRimBottom

            Row {
                id: sign
                anchors.centerIn: parent
                spacing: Theme.space2

                Ico {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "clip"
                    size: Theme.grown(18)
                    color: Theme.accentInk
                }
                Txt {
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(implicitWidth, zone.width - 4 * zone.signPadding - 60)
                    text: qsTr("Drop to attach")
                    size: Theme.bodySize
                    font.weight: Font.DemiBold
                    wrapMode: Text.Wrap
                }
            }
        }
    }
}
