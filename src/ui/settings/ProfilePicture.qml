import QtQuick
import Vorq
import Vorq.Native

// The picture of the user, to be chosen, or dropped here. While one is held over it, it shows that it would
// be taken.
Avatar {
    id: avatar

    required property ProfileEdit profile
    property bool isWelcoming: drop.containsDrag
    readonly property int plusSize: Theme.grown(30)
    readonly property int plusRim: 3
    readonly property int welcomeGap: 3
    readonly property int welcomeRim: 2
    readonly property real welcomeAlpha: 0.9

    picture: profile.picture

    FileDrop {
        id: drop
        anchors.fill: parent
        pictureFormat: formats => avatar.profile.pictureFormat(formats)
        onFilesDropped: files => avatar.profile.useDropped(files)
        onPictureDropped: picture => avatar.profile.useDroppedPicture(picture)
    }
    Rectangle {
        id: welcome
        anchors.fill: parent
        radius: width / 2
        visible: opacity > 0
        opacity: avatar.isWelcoming ? 1 : 0
        color: Theme.withAlpha(Theme.accent, avatar.welcomeAlpha)

        Behavior on opacity {
            NumberAnimation { duration: Motion.hover; easing.type: Easing.OutQuad }
        }
        Rectangle {
            anchors.fill: parent
            anchors.margins: -(avatar.welcomeGap + avatar.welcomeRim)
            radius: width / 2
            color: "transparent"
            border.width: avatar.welcomeRim
            border.color: Theme.focus
        }
        Ico {
            anchors.centerIn: parent
            name: "photo"
            size: avatar.size / 3
            color: Theme.accentOn
        }
    }
    Rectangle {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: -avatar.plusRim
        width: plus.width + 2 * avatar.plusRim
        height: width
        radius: width / 2
        opacity: 1 - welcome.opacity
        color: Theme.surface

        IconButton {
            id: plus
            anchors.centerIn: parent
            size: avatar.plusSize
            iconName: "plus"
            look: IconButton.Accent
            text: qsTr("Choose a profile picture")
            onClicked: App.settings.choosePicture()
        }
    }
}
