import QtQuick
import Vorq
import Vorq.Native

// The picture of the user, or else their initials.
Item {
    id: avatar

    required property AvatarPicture picture
    required property string initials
    property real size: Theme.grown(40)
    readonly property real letterShare: 0.36

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Profile picture")

    Squircle {
        anchors.fill: parent
        visible: !avatar.picture.isThere
        radius: width / 2
        smoothing: 0
        fillTop: Theme.avatarTop
        fillBottom: Theme.avatarBottom
        rimTop: Theme.accentRimTop
        rimBottom: Theme.accentRimBottom
    }
    Txt {
        anchors.centerIn: parent
        visible: !avatar.picture.isThere && text !== ""
        text: avatar.initials
        size: avatar.size * avatar.letterShare / Theme.look.textScale
        font.weight: Font.DemiBold
        color: Theme.accentOn
        Accessible.ignored: true
    }
    Ico {
        anchors.centerIn: parent
        visible: !avatar.picture.isThere && avatar.initials === ""
        name: "user"
        size: avatar.size / 2
        color: Theme.accentOn
    }
    AvatarPainter {
        anchors.fill: parent
        visible: avatar.picture.isThere
        picture: avatar.picture
    }
}
